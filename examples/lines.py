#!/usr/bin/env python3
"""Reads a text file of any code type line by line.   lines.py FILE

The library is looked for as the system does; the variable JKC_LIBRARY names another.
"""
import ctypes
import os
import sys

UTF8 = 15
jkc = ctypes.CDLL(os.environ.get("JKC_LIBRARY", "libjkc.so.2"))
for function, arguments in {
    "jkc_io_open": [ctypes.c_char_p] + 3 * [ctypes.c_int64] + [ctypes.c_uint8, ctypes.c_void_p],
    "jkc_io_get_size": [ctypes.c_int64],
    "jkc_io_get_line": [ctypes.c_int64, ctypes.c_char_p, ctypes.c_uint64, ctypes.POINTER(ctypes.c_uint64)],
    "jkc_io_close": [ctypes.c_int64],
}.items():
    getattr(jkc, function).argtypes = arguments
    getattr(jkc, function).restype = ctypes.c_int64


def lines(path):
    """The lines as str, and how many characters the library counted in each."""
    slot = jkc.jkc_io_open(os.fsencode(path), 0, 0, UTF8, 0, None)
    if slot < 0:
        raise OSError(f"{path}: status {slot}")
    try:
        line = ctypes.create_string_buffer(max(1, jkc.jkc_io_get_size(slot)))
        length = ctypes.c_uint64()
        while (count := jkc.jkc_io_get_line(slot, line, len(line), ctypes.byref(length))) >= 0:
            yield line.raw[: length.value].decode(), count
    finally:
        jkc.jkc_io_close(slot)


for text, characters in lines(sys.argv[1]):
    print(f"{characters:3} {text}")
