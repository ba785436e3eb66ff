"""What does not come through a conversion, and where it stands."""
from __future__ import annotations

from typing import Any, NamedTuple, Optional

from ._native import ffi, lib
from ._types import LossKind
from .encodings import Encoding

_KINDS: dict[int, LossKind] = {
    lib.JKC_LOSS_ILL_FORMED: "ill-formed",
    lib.JKC_LOSS_UNMAPPABLE: "unmappable",
    lib.JKC_LOSS_TRUNCATED: "truncated",
}


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
        self.options.places = limit > 0
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
        told = []
        for i in range(self._list.count):
            loss = self._list.items[i]
            begin = mark + loss.offset
            character = chr(loss.code_point) if loss.code_point >= 0 else None
            told.append(Loss(_KINDS[loss.kind], begin, loss.length, bytes(view[begin : begin + loss.length]),
                             character, loss.line, loss.column))
        return tuple(told)


def _free(losses: Any) -> None:
    lib.jkc_native_free(losses.items)
