"""Describes the extension module jkc._native: the C library's calls as its headers declare them, and native.c."""
import os
import re
import shlex
import subprocess
import sysconfig
from pathlib import Path

from cffi import FFI

HERE = Path(__file__).resolve().parent
# In a source archive the library's sources lie beside this file, else it is part of them.
LIBRARY = HERE / "libjkc" if (HERE / "libjkc").is_dir() else HERE.parent.parent
INCLUDE = LIBRARY / "include"
HEADERS = [name for name in ("jkc.h", "jkc/converter.h", "jkc/detector.h", "jkc/mojibake.h") if (INCLUDE / name).exists()]


def declarations() -> str:
    """What the public headers declare, as cffi reads it: without what they include."""
    compiler = shlex.split(os.environ.get("CC") or sysconfig.get_config_var("CC") or "cc")
    command = [*compiler, "-E", "-DJKC_API=", "-DJKC_NO_SHORT_STATUS_NAMES", "-x", "c", str(INCLUDE / "jkc.h")]
    wanted = {str(INCLUDE / name) for name in HEADERS}
    kept, keep = [], False
    for line in subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines():
        marker = re.match(r'# \d+ "(.*?)"', line)
        if marker:
            keep = os.path.normpath(marker[1]) in wanted
        elif keep and line:
            kept.append(line)
    return "\n".join(kept).replace("_Bool", "bool")


def native_declarations() -> str:
    """What native.c offers to Python: its part between the two lines that say so."""
    return re.search(r"/\* Python sees: \*/\n(.*?)/\* Python sees no more\. \*/", source(), re.DOTALL)[1]


def source() -> str:
    return (HERE / "native.c").read_text(encoding="utf-8")


ffibuilder = FFI()
ffibuilder.cdef(declarations())
ffibuilder.cdef(native_declarations())
ffibuilder.set_source("jkc._native", source(), include_dirs=[str(INCLUDE)], define_macros=[("JKC_STATIC", None)])
