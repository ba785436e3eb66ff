"""Text to bytes and back by the library's converters, with Python's error handlers.

A converter runs from the front of a text to its end or to the first loss. So that a text can go on anywhere, what tells a
converter how is put in front: the designation of ISO-2022-JP that is in force, or a space, so that what follows is not taken
for a byte-order mark. What comes of this front is cut off. How a text goes on is a small number, which incremental codecs
keep: 0 where nothing is to be known.
"""
from __future__ import annotations

import codecs
import re
from typing import Any, Callable, Union

from ._native import ffi, lib
from .encodings import Encoding

Buffer = Union[bytes, bytearray, memoryview]
Handler = Callable[[UnicodeError], Any]

_AT_FRONT = 1  # how a text of a Unicode form begins: its byte-order mark may come
_NO_MAPPING = "character maps to <undefined>"
_REASONS = {
    lib.JKC_LOSS_ILL_FORMED: "illegal multibyte sequence",
    lib.JKC_LOSS_UNMAPPABLE: _NO_MAPPING,
    lib.JKC_LOSS_TRUNCATED: "incomplete multibyte sequence",
}
_SURROGATES = re.compile("[\ud800-\udfff]")
_CLOSING = b"\x1b(B"

_STOP = lib.JKC_ON_LOSS_STOP
_POLICIES = {"replace": lib.JKC_ON_LOSS_REPLACE, "ignore": lib.JKC_ON_LOSS_OMIT}

# The types that begin with a mark: the same without it.
_WITH_BOM = {
    lib.JKC_TYPE_UTF8_BOM: lib.JKC_TYPE_UTF8,
    lib.JKC_TYPE_UTF16LE_BOM: lib.JKC_TYPE_UTF16LE,
    lib.JKC_TYPE_UTF16BE_BOM: lib.JKC_TYPE_UTF16BE,
}
_UNICODE = {lib.JKC_TYPE_UTF8: "utf-8", lib.JKC_TYPE_UTF16LE: "utf-16-le", lib.JKC_TYPE_UTF16BE: "utf-16-be"}
_BOMS = {code_type: "\ufeff".encode(name) for code_type, name in _UNICODE.items()}

_allocate = ffi.new_allocator(should_clear_after_alloc=False)


_EMPTY = ffi.new("uint8_t[0]")


class _Converter:
    """A converter from one code type to another, with room for the output of a short text."""

    ROOM = 1 << 16

    def __init__(self, source: int, target: int, on_loss: int) -> None:
        options = ffi.new("JkcConverterOptions *", {"size": ffi.sizeof("JkcConverterOptions"), "on_loss": on_loss})
        made = ffi.new("JkcConverter **")
        if lib.jkc_converter_create(made, source, target, options) != 0:
            raise MemoryError
        self._converter = ffi.gc(made[0], lib.jkc_converter_release)
        self._room = _allocate("uint8_t[]", self.ROOM)
        self.piece = ffi.new("JkcPiece *")

    def run(self, front: bytes, data: Any, offset: int, room: int) -> Any:
        """Converts the data from there on; the output holds until the next call."""
        out = self._room if room <= self.ROOM else _allocate("uint8_t[]", room)
        lib.jkc_native_convert(self._converter, front, len(front), data + offset, len(data) - offset, out, room, self.piece)
        return out


class _Converters:
    """Converters that are used again, by any number of threads."""

    def __init__(self, source: int, target: int) -> None:
        self._types = source, target
        self._idle: dict[int, list[_Converter]] = {
            policy: [] for policy in (_STOP, *_POLICIES.values())}

    def take(self, on_loss: int) -> _Converter:
        try:
            return self._idle[on_loss].pop()
        except IndexError:
            return _Converter(*self._types, on_loss)

    def give_back(self, converter: _Converter, on_loss: int) -> None:
        idle = self._idle[on_loss]
        if len(idle) < 8:
            idle.append(converter)


def _answer(handler: Handler, error: UnicodeError, kinds: Any) -> tuple[Any, int]:
    """What an error handler wants to stand there, and where the text is to go on."""
    answer = handler(error)
    is_decoding = isinstance(error, UnicodeDecodeError)
    if not (isinstance(answer, tuple) and len(answer) == 2 and isinstance(answer[0], kinds) and isinstance(answer[1], int)):
        raise TypeError("decoding error handler must return (str, int) tuple" if is_decoding
                        else "encoding error handler must return (str/bytes, int) tuple")
    replacement, position = answer
    length = len(error.object)  # type: ignore[attr-defined]
    if not -length <= position <= length:
        raise IndexError(f"position {position} from error handler out of bounds")
    return replacement, position + length if position < 0 else position


class _Designations:
    """How ISO-2022-JP goes on, as a number: the set that is designated, whether SO is in force, the plane that is selected."""

    _ESCAPES = (b"\x1b(B", b"\x1b(I", b"\x1b$B", b"\x1b$(D", b"\x1b$(O", b"\x1b$(P")
    _SETS = {b"(B": 0, b"(H": 0, b"(J": 0, b"(I": 1, b"$@": 2, b"$B": 2, b"$J": 2, b"$(D": 3, b"$(O": 4, b"$(Q": 4, b"$(P": 5}
    # A plane of JIS X 0213 stays selected for JIS X 0212 until JIS X 0208 is designated.
    _PLANES = {2: 0, 4: 4, 5: 5}

    def front(self, state: int) -> bytes:
        """What designates it in a text that begins."""
        if state == 0:
            return b""
        designated, shift, plane = state & 7, state >> 3 & 1, state >> 4
        escapes = self._ESCAPES[plane] if plane else b""
        return escapes + self._ESCAPES[designated] + b"\x0e" * shift

    def after(self, data: bytes, begin: int, end: int, state: int) -> int:
        """The number behind a part of the data in which nothing is lost."""
        escape = data.rfind(b"\x1b", begin, end)
        designated, shift, plane = state & 7, state >> 3 & 1, state >> 4
        if escape >= 0:
            designated, shift = self._designated(data, escape), 0
            at = escape
            while at >= 0:
                selected = self._PLANES.get(self._designated(data, at))
                if selected is not None:
                    plane = selected
                    break
                at = data.rfind(b"\x1b", begin, at)
        behind = max(escape, begin)
        shift_out, shift_in = data.rfind(b"\x0e", behind, end), data.rfind(b"\x0f", behind, end)
        if shift_out != shift_in:
            shift = int(shift_out > shift_in)
        return designated | shift << 3 | plane << 4

    def _designated(self, data: bytes, escape: int) -> int:
        length = 4 if data.startswith(b"$(", escape + 1) else 3
        return self._SETS[data[escape + 1:escape + length]]


_DESIGNATIONS = _Designations()


class Conversion:
    """Decodes from one encoding and encodes to it."""

    def __init__(self, name: str, encoding: Encoding) -> None:
        self.name = name
        code_type = _WITH_BOM.get(encoding.code_type, encoding.code_type)
        self._is_jis = code_type in (lib.JKC_TYPE_JIS, lib.JKC_TYPE_JIS2004)
        self._bom = _BOMS.get(code_type, b"")
        self._writes_bom = encoding.bom
        self.decoding_begins = _AT_FRONT if self._bom else 0
        self.encoding_begins = _AT_FRONT if self._writes_bom else 0
        self._space = " ".encode(_UNICODE.get(code_type, "ascii"))
        self._decoders = _Converters(code_type, lib.JKC_TYPE_UTF16LE)
        self._encoders = _Converters(lib.JKC_TYPE_UTF16LE, code_type)

    # --- Bytes to text. ---

    def decode(self, data: Buffer, errors: str, final: bool, state: int) -> tuple[str, int, int]:
        """Decodes.

        Unless `final` is set, a character that is cut off at the end is left. Returns the text, how many bytes are taken,
        and how the text goes on.
        """
        if self._is_jis:
            data = bytes(data)
        on_loss = _POLICIES.get(errors, _STOP) if not self._is_jis else _STOP
        converter = self._decoders.take(on_loss)
        try:
            with ffi.from_buffer("uint8_t[]", data) as buffer:
                position = 0
                if self._bom and state == _AT_FRONT:
                    state = 0
                    front = ffi.buffer(buffer)[:len(self._bom)]
                    if front == self._bom:
                        position = len(front)
                    elif self._bom.startswith(front) and not final:
                        return "", 0, _AT_FRONT
                return self._decode(converter, on_loss, buffer, data, position, errors, final, state)
        finally:
            self._decoders.give_back(converter, on_loss)

    def _decode(self, converter: _Converter, on_loss: int, buffer: Any, data: Buffer, position: int, errors: str,
                final: bool, state: int) -> tuple[str, int, int]:
        piece = converter.piece
        length = len(buffer)
        texts: list[str] = []
        handler = None
        while True:
            if self._is_jis:
                front, skipped = _DESIGNATIONS.front(state), 0
            else:
                front, skipped = (self._space, 2) if self._bom else (b"", 0)
            out = converter.run(front, buffer, position, 2 * (length - position + len(front)))
            text = codecs.utf_16_le_decode(ffi.buffer(out + skipped, piece.written - skipped), "strict", True)[0]
            lost = piece.kind
            end = position + piece.offset if lost else length
            if self._is_jis:
                state = _DESIGNATIONS.after(data, position, end, state)  # type: ignore[arg-type]
            if lost == lib.JKC_LOSS_TRUNCATED and not final:
                if on_loss == lib.JKC_ON_LOSS_REPLACE:
                    text = text[:-1]  # the mark for what is cut off
                lost = 0
            elif on_loss != _STOP:
                end, lost = length, 0
            texts.append(text)
            if not lost:
                return "".join(texts), end, state
            if not isinstance(data, bytes):
                data = bytes(buffer)
            error = UnicodeDecodeError(self.name, data, end, end + piece.length, _REASONS[lost])
            handler = handler or codecs.lookup_error(errors)
            replacement, position = _answer(handler, error, str)
            texts.append(replacement)

    # --- Text to bytes. ---

    def encode(self, text: str, errors: str, final: bool, state: int) -> tuple[bytes, int]:
        """Encodes.

        The number for how ISO-2022-JP goes on is here its last character where a designation is to be closed, which
        `final` does. Returns the bytes, and how the text goes on.
        """
        # What stands for a loss in a Unicode form, or as the last character of ISO-2022-JP, is left to the handler.
        by_converter = final if self._is_jis else not self._bom
        on_loss = _POLICIES.get(errors, _STOP) if by_converter else _STOP
        pieces: list[bytes] = []
        if self._writes_bom and state == _AT_FRONT:
            state = 0
            pieces.append(self._bom)
        try:
            units = codecs.utf_16_le_encode(text, "strict")[0]
        except UnicodeEncodeError:  # two surrogates could make a character
            units = codecs.utf_16_le_encode(_SURROGATES.sub("\udc00", text), "surrogatepass")[0]
        converter = self._encoders.take(on_loss)
        try:
            state = self._encode(converter, on_loss, units, text, errors, final, state, pieces)
        finally:
            self._encoders.give_back(converter, on_loss)
        return b"".join(pieces), state

    def _encode(self, converter: _Converter, on_loss: int, units: bytes, text: str, errors: str, final: bool, state: int,
                pieces: list[bytes]) -> int:
        piece = converter.piece
        buffer = ffi.from_buffer("uint8_t[]", units)
        has_pairs = len(units) != 2 * len(text)
        position = index = 0  # in units' bytes and in characters
        handler = None
        while True:
            front, skipped = self._front_of_encoding(converter, state)
            out = converter.run(front, buffer, position, 3 * (len(units) - position + len(front)) + 16)
            written = ffi.buffer(out + skipped, piece.written - skipped)[:]
            is_lost = piece.kind and on_loss == _STOP
            end = position + piece.offset if is_lost else len(units)
            if is_lost or not final:
                index += len(units[position:end].decode("utf-16-le")) if has_pairs else (end - position) // 2
                if self._is_jis and written.endswith(_CLOSING):
                    written = written[:-len(_CLOSING)]
                    state = ord(text[index - 1]) if end > position else state
                else:
                    state = 0
            else:
                state = 0
            pieces.append(written)
            if not is_lost:
                return state
            reason = "surrogates not allowed" if _SURROGATES.match(text, index) else _NO_MAPPING
            error = UnicodeEncodeError(self.name, text, index, index + 1, reason)
            handler = handler or codecs.lookup_error(errors)
            lost_length = piece.length
            replacement, after = _answer(handler, error, (str, bytes))
            if isinstance(replacement, bytes):
                pieces.append(replacement)
            else:
                added, state = self.encode(replacement, "strict", False, state)
                pieces.append(added)
            if not has_pairs:
                position = 2 * after
            elif after == index + 1:
                position = end + lost_length
            elif after > index:
                position = end + len(codecs.utf_16_le_encode(text[index:after], "surrogatepass")[0])
            else:
                position = end - len(codecs.utf_16_le_encode(text[after:index], "surrogatepass")[0])
            index = after

    def _front_of_encoding(self, converter: _Converter, state: int) -> tuple[bytes, int]:
        """What brings a converter there, and the length of what it becomes."""
        if state == 0:
            return b" \0", len(self._space)
        front = codecs.utf_16_le_encode(chr(state))[0]
        converter.run(front, _EMPTY, 0, converter.ROOM)
        return front, converter.piece.written - len(_CLOSING)
