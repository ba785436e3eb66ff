"""Codecs of Python for the encodings: importing jkc registers them.

Those that Python lacks have their own names: cp50221 (ISO-2022-JP as Windows writes it), cp51932, cp20932 and eucjp-ms.
All, also those that Python has too, are there as jkc-NAME for each name in jkc.encodings: "jkc-cp932", "jkc-euc-jp",
"jkc-iso-2022-jp-2004", "jkc-utf-8-sig" and so on, but for ASCII. They work wherever Python takes the name of an
encoding.

What they decode and encode is what the library reads and writes:

- Every code is read that the encoding has for a character, and the one is written that Windows (or the standard)
  writes.
- The yen sign and the overline are written as the backslash and the tilde, which stand in their places in JIS X 0201;
  these are read as backslash and tilde. So are other characters that share a code in the tables of different systems,
  as the wave dash and the full-width tilde: both are written, one is read.
- A byte-order mark at the front is passed over by every Unicode form, of its own byte order. "jkc-utf-8-sig",
  "jkc-utf-16" (little-endian) and "jkc-utf-16be-bom" write one, the others do not. Anywhere else U+FEFF is a character.

Error handlers are told the bytes of a sequence that is ill-formed or has no character, or one character that the
encoding lacks. Text that they answer is encoded in its place, strictly; bytes are put there as they are, in ISO-2022-JP
without a return to ASCII, as by Python's own codecs.
"""
from __future__ import annotations

import codecs
from functools import lru_cache
from typing import Any, Optional

from . import encodings
from ._conversion import Conversion
from ._native import lib
from ._types import Buffer

_LACKING = (lib.JKC_TYPE_JIS, lib.JKC_TYPE_EUC_20932, lib.JKC_TYPE_EUC_51932, lib.JKC_TYPE_EUC_MS)


class _IncrementalDecoder(codecs.IncrementalDecoder):
    conversion: Conversion
    _pending: bytes
    _state: int

    def __init__(self, errors: str = "strict") -> None:
        super().__init__(errors)
        self.reset()

    def decode(self, input: Buffer, final: bool = False) -> str:  # type: ignore[override]
        data = self._pending + input if self._pending else input
        text, taken, self._state = self.conversion.decode(data, self.errors, final, self._state)
        self._pending = bytes(data[taken:])
        return text

    def reset(self) -> None:
        self._pending = b""
        self._state = self.conversion.decoding_begins

    def getstate(self) -> tuple[bytes, int]:
        return self._pending, self._state

    def setstate(self, state: tuple[bytes, int]) -> None:
        self._pending, self._state = state


class _IncrementalEncoder(codecs.IncrementalEncoder):
    conversion: Conversion
    _state: int

    def __init__(self, errors: str = "strict") -> None:
        super().__init__(errors)
        self.reset()

    def encode(self, input: str, final: bool = False) -> bytes:
        data, self._state = self.conversion.encode(input, self.errors, final, self._state)
        return data

    def reset(self) -> None:
        self._state = self.conversion.encoding_begins

    def getstate(self) -> int:
        return self._state

    def setstate(self, state: int) -> None:  # type: ignore[override]
        self._state = state


class _StreamReader(codecs.StreamReader):
    conversion: Conversion
    bytebuffer: bytes

    def __init__(self, stream: Any, errors: str = "strict") -> None:
        super().__init__(stream, errors)
        self._state = self.conversion.decoding_begins

    def decode(self, input: Buffer, errors: str = "strict") -> tuple[str, int]:
        text, taken, self._state = self.conversion.decode(input, errors, False, self._state)
        return text, taken

    def read(self, size: int = -1, chars: int = -1, firstline: bool = False) -> str:
        text = super().read(size, chars, firstline)
        if self.bytebuffer and (size < 0 and chars < 0 or not text and size != 0 and chars != 0):
            # The text ends inside a character.
            added, _, self._state = self.conversion.decode(self.bytebuffer, self.errors, True, self._state)
            self.bytebuffer = b""
            text += added
        return text

    def reset(self) -> None:
        super().reset()
        self._state = self.conversion.decoding_begins


class _StreamWriter(codecs.StreamWriter):
    conversion: Conversion

    def __init__(self, stream: Any, errors: str = "strict") -> None:
        super().__init__(stream, errors)
        self._state = self.conversion.encoding_begins

    def encode(self, input: str, errors: str = "strict") -> tuple[bytes, int]:
        data, self._state = self.conversion.encode(input, errors, False, self._state)
        return data, len(input)

    def reset(self) -> None:
        """Writes what closes the text."""
        if self._state != self.conversion.encoding_begins:
            self.stream.write(self.conversion.encode("", self.errors, True, self._state)[0])
        self._state = self.conversion.encoding_begins

    def seek(self, offset: int, whence: int = 0) -> None:
        """Closes the text where it is, and goes elsewhere."""
        self.reset()
        self.stream.seek(offset, whence)
        if whence != 0 or offset != 0:
            self._state = 0


def _codec(name: str, encoding: encodings.Encoding) -> codecs.CodecInfo:
    conversion = Conversion(name, encoding)

    def encode(input: str, errors: str = "strict") -> tuple[bytes, int]:
        return conversion.encode(input, errors, True, conversion.encoding_begins)[0], len(input)

    def decode(input: Buffer, errors: str = "strict") -> tuple[str, int]:
        return conversion.decode(input, errors, True, conversion.decoding_begins)[:2]

    def of_this(base: type) -> Any:
        return type(base.__name__.lstrip("_"), (base,), {"conversion": conversion})

    return codecs.CodecInfo(encode, decode, of_this(_StreamReader), of_this(_StreamWriter),
                            of_this(_IncrementalEncoder), of_this(_IncrementalDecoder), name=name)


_made = lru_cache(maxsize=None)(_codec)


def own(encoding: encodings.Encoding) -> codecs.CodecInfo:
    """The codec that reads and writes an encoding as the library does: "jkc-...", but for ASCII, which is Python's."""
    if encoding.code_type == lib.JKC_TYPE_ASCII:
        return codecs.lookup(encoding.python)
    is_only = encodings.lookup(encoding.python) is encoding
    return _made("jkc-" + (encoding.python if is_only else encoding.aliases[0]).lower().replace("_", "-"), encoding)


def search(name: str) -> Optional[codecs.CodecInfo]:
    """The codec of a name, for codecs.register(); None where it is not one of these."""
    word = encodings.plain(name)
    encoding = encodings.find(name)
    if encoding is None or encoding.code_type == lib.JKC_TYPE_ASCII:
        return None
    if word.startswith("jkc"):
        return own(encoding)
    return _made(encoding.python, encoding) if encoding.code_type in _LACKING else None


codecs.register(search)
