"""What does not come through a conversion, and where it stands."""
from __future__ import annotations

from typing import Any, NamedTuple, Optional

from ._native import ffi, lib
from ._types import LossKind
from .codecs import own
from .encodings import Encoding

_KINDS: dict[int, LossKind] = {
    lib.JKC_LOSS_ILL_FORMED: "ill-formed",
    lib.JKC_LOSS_UNMAPPABLE: "unmappable",
    lib.JKC_LOSS_TRUNCATED: "truncated",
}
_LONG_LINE = 65536


class Loss(NamedTuple):
    """Something of a text that does not come through as it is."""

    kind: LossKind
    """ill-formed: bytes that are no character; unmappable: a character that the target lacks, or a code to which the
    source assigns none; truncated: the text ends inside a character."""
    offset: int
    """Where it stands in the text, in bytes from its begin."""
    length: int
    """Its bytes."""
    data: bytes
    """These bytes."""
    character: Optional[str]
    """The character that the target lacks; None where there is none."""
    line: int
    """Its line, from 1 on; lines end with LF, CR or CR LF."""
    column: int
    """Which character of the line it is, from 1 on."""

    def __str__(self) -> str:
        place = f"line {self.line}, column {self.column}: "
        if self.character is not None:
            shown = f" ({self.character})" if self.character.isprintable() else ""
            return f"{place}U+{ord(self.character):04X}{shown}"
        what = {"ill-formed": "ill-formed bytes", "unmappable": "code without a character", "truncated": "cut character"}
        return f"{place}{what[self.kind]} {self.data.hex(' ').upper()}"


class Places:
    """Tells line and column of offsets that never go back; as the program does, in one pass."""

    def __init__(self, data: Any, encoding: Encoding):
        self._data = data
        self._encoding = encoding
        self._passed = 0  # up to here characters are counted
        self._line = 1
        self._characters = 0  # of this line, in front of _passed
        self._behind_cr = False
        # JIS text is read from the line's begin on, as its designations last.
        self._is_7bit = encoding.code_type in (lib.JKC_TYPE_JIS, lib.JKC_TYPE_JIS2004)
        self._line_begin = 0

    def at(self, offset: int) -> tuple[int, int]:
        piece = bytes(self._data[self._passed : offset])
        text: Optional[str] = None
        if "utf-16" in self._encoding.python:
            text = self._decode(piece)
            behind_lines = self._pass_lines(text, "\n", "\r", "\r\n")
            if behind_lines:
                text = text[behind_lines:]
                self._characters = 0
        else:
            behind_lines = self._pass_lines(piece, b"\n", b"\r", b"\r\n")
            if behind_lines:
                self._line_begin = self._passed + behind_lines
                piece = piece[behind_lines:]
                self._characters = 0
        self._passed = offset
        if self._is_7bit and offset - self._line_begin <= _LONG_LINE:
            self._characters = 0
            piece = bytes(self._data[self._line_begin : offset])
        self._characters += len(self._decode(piece) if text is None else text)
        return self._line, self._characters + 1

    def _pass_lines(self, piece: Any, lf: Any, cr: Any, crlf: Any) -> int:
        """Counts the line ends, and returns how much of the piece stands in front of the last line."""
        if piece:
            ends = piece.count(lf) + piece.count(cr) - piece.count(crlf)
            self._line += ends - (1 if self._behind_cr and piece.startswith(lf) else 0)
            self._behind_cr = piece.endswith(cr)
        return int(max(piece.rfind(lf), piece.rfind(cr)) + 1)

    def _decode(self, piece: bytes) -> str:
        return own(self._encoding).decode(piece, "replace")[0]


def mark_length(data: Any, encoding: Encoding) -> int:
    """The length of the byte-order mark at the front, behind which the library counts offsets."""
    mark = {"utf-8": b"\xef\xbb\xbf", "utf-8-sig": b"\xef\xbb\xbf"}.get(encoding.python)
    if encoding.code_type in (lib.JKC_TYPE_UTF16BE, lib.JKC_TYPE_UTF16BE_BOM):
        mark = b"\xfe\xff"
    elif encoding.code_type in (lib.JKC_TYPE_UTF16LE, lib.JKC_TYPE_UTF16LE_BOM):
        mark = b"\xff\xfe"
    return len(mark) if mark and bytes(data[: len(mark)]) == mark else 0


class Collector:
    """Options of a converter that keep its first `limit` losses."""

    def __init__(self, options: Any, limit: int):
        self._list = ffi.gc(ffi.new("JkcLossList *"), _free)
        self._list.limit = limit
        self.options = ffi.new("JkcConverterOptions *", options[0])
        self.options.observer = ffi.addressof(lib, "jkc_native_collect")
        self.options.observer_data = self._list

    @property
    def total(self) -> int:
        """How many losses there were, kept or not."""
        return int(self._list.total)

    def losses(self, data: Any, encoding: Encoding) -> tuple[Loss, ...]:
        """What was lost of a text, with its places."""
        view = memoryview(data).cast("B")
        mark = mark_length(view, encoding)
        places = Places(view, encoding)
        told = []
        for i in range(self._list.count):
            loss = self._list.items[i]
            begin = mark + loss.offset
            character = chr(loss.code_point) if loss.code_point >= 0 else None
            told.append(Loss(_KINDS[loss.kind], begin, loss.length, bytes(view[begin : begin + loss.length]),
                             character, *places.at(begin)))
        return tuple(told)


def _free(losses: Any) -> None:
    lib.jkc_native_free(losses.items)
