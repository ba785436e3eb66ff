"""Text that was read in a wrong encoding, mended: unmojibake()."""
from __future__ import annotations

from typing import NamedTuple, Optional

from ._native import ffi, lib


class Misreading(NamedTuple):
    """One misreading: text in the encoding `was` had been read as `read_as`."""

    was: str
    read_as: str


class Mending(NamedTuple):
    """A text that was broken, and how it was mended."""

    text: str
    """The text as it was, with U+FFFD for each character that did not come back."""
    steps: tuple[Misreading, ...]
    """What had happened to it, in the order in which that is undone."""
    confidence: float
    """How sure that is, from 0 to 1."""
    lost: int
    """How many characters did not come back."""


def unmojibake(text: str) -> Optional[Mending]:
    """Mends text that was read in a wrong encoding, such as Shift_JIS read as CP1252, or UTF-8 read as Shift_JIS.

    :returns: what it may have been: a proposal; None where the text is sound, or no way back is known.
    """
    mended = ffi.new("uint8_t **")
    length = ffi.new("size_t *")
    mending = ffi.new("JkcMending *")
    mending.size = ffi.sizeof("JkcMending")
    # A lone surrogate is in no text that was read in an encoding.
    data = text.encode("utf-8", "replace")
    status = lib.jkc_unmojibake(ffi.from_buffer("uint8_t[]", data), len(data), mended, length, mending)
    if status != lib.JKC_SUCCESS:
        raise MemoryError
    if mending.count == 0:
        return None
    try:
        whole = str(ffi.buffer(mended[0], length[0]), "utf-8")
    finally:
        lib.jkc_free(mended[0])
    steps = tuple(Misreading(_name(step.was), _name(step.read_as)) for step in mending.steps[0 : mending.count])
    return Mending(whole, steps, mending.confidence / 100, mending.lost)


def _name(encoding: int) -> str:
    return str(ffi.string(lib.jkc_misread_name(encoding)), "ascii")
