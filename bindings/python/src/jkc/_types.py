"""Types that signatures name."""
from __future__ import annotations

import mmap
from array import array
from typing import Any, Protocol, Union

from typing import Literal

Buffer = Union[bytes, bytearray, memoryview, mmap.mmap, "array[Any]"]
"""Bytes in memory, which are looked at where they are, without a copy."""

Newline = Literal["\n", "\r", "\r\n"]
Kind = Literal["text", "empty", "undecided", "unknown", "binary"]
LossKind = Literal["ill-formed", "unmappable", "truncated"]


class BinaryReader(Protocol):
    """A file that is open for reading bytes."""

    def read(self, size: int = ..., /) -> bytes: ...
