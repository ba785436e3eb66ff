"""Text to bytes and back by the library's converters, with Python's error handlers.

A converter runs from the front of a text to its end or to the first loss. So that a text can go on anywhere, what
tells a converter how is put in front: the designation of ISO-2022-JP that is in force, or a space, so that what follows
is not taken for a byte-order mark. What comes of this front is cut off. How a text goes on is a small number, which
incremental codecs keep: 0 where nothing is to be known.
"""
from __future__ import annotations

import codecs
import re
from typing import Any, Callable, Optional

from ._native import ffi, lib
from ._types import Buffer
from .encodings import Encoding

Handler = Callable[[UnicodeError], Any]

_AT_FRONT = 1  # how a text of a Unicode form begins: its byte-order mark may come
_NO_MAPPING = "illegal multibyte sequence"
_REASONS = {
    lib.JKC_LOSS_ILL_FORMED: "illegal multibyte sequence",
    lib.JKC_LOSS_UNMAPPABLE: "code without a character",
    lib.JKC_LOSS_TRUNCATED: "incomplete multibyte sequence",
}
_SURROGATES = re.compile("[\ud800-\udfff]")
_CLOSING = b"\x1b(B"

_POLICIES = {"replace": lib.JKC_ON_LOSS_REPLACE, "ignore": lib.JKC_ON_LOSS_OMIT}

# The types that begin with a mark: the same without it.
_WITH_BOM = {
    lib.JKC_TYPE_UTF8_BOM: lib.JKC_TYPE_UTF8,
    lib.JKC_TYPE_UTF16LE_BOM: lib.JKC_TYPE_UTF16LE,
    lib.JKC_TYPE_UTF16BE_BOM: lib.JKC_TYPE_UTF16BE,
}
# What these answer depends on the character alone.
_PURE_HANDLERS = (codecs.backslashreplace_errors, codecs.xmlcharrefreplace_errors, codecs.namereplace_errors)
_MANY = 100  # losses, after which all that is lost is looked for at once
_SHORT = 1 << 14  # bytes that are copied sooner than looked at where they are
_UNICODE = {lib.JKC_TYPE_UTF8: "utf-8", lib.JKC_TYPE_UTF16LE: "utf-16-le", lib.JKC_TYPE_UTF16BE: "utf-16-be"}
_BOMS = {code_type: "\ufeff".encode(name) for code_type, name in _UNICODE.items()}

_convert = lib.jkc_native_convert
_allocate = ffi.new_allocator(should_clear_after_alloc=False)


class _Converter:
    """A converter from one code type to another."""

    ROOM = 1 << 16  # for the output of a short text

    def __init__(self, source: int, target: int, on_loss: int) -> None:
        options = ffi.new("JkcConverterOptions *", {"size": ffi.sizeof("JkcConverterOptions"), "on_loss": on_loss})
        made = ffi.new("JkcConverter **")
        if lib.jkc_converter_create(made, source, target, options) != 0:
            raise MemoryError
        self._converter = ffi.gc(made[0], lib.jkc_converter_release)
        self._room = _allocate("uint8_t[]", self.ROOM)
        self.piece = ffi.new("JkcPiece *")

    def run(self, front: bytes, data: Any, begin: int, end: int, room: int) -> Any:
        """Converts a part of the data behind a front. Returns the output, which holds until the next call."""
        out = self._room if room <= self.ROOM else _allocate("uint8_t[]", room)
        _convert(self._converter, front, len(front), data, begin, end, out, room, self.piece)
        return out


class _Converters:
    """Converters that stop at a loss. They are used again, by any number of threads."""

    def __init__(self, source: int, target: int) -> None:
        self._types = source, target
        self._idle: list[_Converter] = []
        self.give_back = self._idle.append

    def take(self) -> _Converter:
        """One that may be given back."""
        try:
            return self._idle.pop()
        except IndexError:
            return _Converter(*self._types, lib.JKC_ON_LOSS_STOP)

    def that_goes_on(self, errors: str) -> Optional[_Converter]:
        """One that does at a loss what the error handler of this name would; None where no converter does."""
        policy = _POLICIES.get(errors)
        return None if policy is None else _Converter(*self._types, policy)


def _answer(handler: Handler, error: UnicodeError, kinds: Any) -> tuple[Any, int]:
    """What an error handler wants to stand there, and where the text is to go on."""
    answer = handler(error)
    try:
        replacement, position = answer
        is_fit = isinstance(answer, tuple) and isinstance(replacement, kinds) and isinstance(position, int)
    except (TypeError, ValueError):
        is_fit = False
    if not is_fit:
        raise TypeError("decoding error handler must return (str, int) tuple" if kinds is str
                        else "encoding error handler must return (str/bytes, int) tuple")
    length = len(error.object)  # type: ignore[attr-defined]
    if not -length <= position <= length:
        raise IndexError(f"position {position} from error handler out of bounds")
    return replacement, position + length if position < 0 else position


class _Designations:
    """How ISO-2022-JP goes on, as a number: the set that is designated, whether SO is in force, the plane selected."""

    _ESCAPES = (b"\x1b(B", b"\x1b(I", b"\x1b$B", b"\x1b$(D", b"\x1b$(O", b"\x1b$(P")
    _SETS = {b"(B": 0, b"(H": 0, b"(J": 0, b"(I": 1, b"$@": 2, b"$B": 2, b"$J": 2, b"$(D": 3, b"$(O": 4, b"$(Q": 4,
             b"$(P": 5}
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
        self._has_ascii = not self._is_jis and len(self._space) == 1  # its text is itself
        self._decoders = _Converters(code_type, lib.JKC_TYPE_UTF16LE)
        self._encoders = _Converters(lib.JKC_TYPE_UTF16LE, code_type)

    # --- Bytes to text. ---

    def decode(self, data: Buffer, errors: str, final: bool, state: int) -> tuple[str, int, int]:
        """Decodes.

        Unless `final` is set, a character that is cut off at the end is left. Returns the text, how many bytes are
        taken, and how the text goes on.
        """
        if type(data) is not bytes:
            data = memoryview(data).cast("B")
            if self._is_jis or len(data) <= _SHORT:
                data = bytes(data)
        if self._has_ascii and type(data) is bytes and data.isascii():
            return str(data, "ascii"), len(data), 0 if data else state
        readable = data if type(data) is bytes else ffi.from_buffer("uint8_t[]", data)
        begin, length = 0, len(data)
        if self._bom and state == _AT_FRONT:
            state = 0
            front = bytes(data[:len(self._bom)])
            if front == self._bom:
                begin = len(front)
            elif self._bom.startswith(front) and not final:
                return "", 0, _AT_FRONT
        converter = taken = self._decoders.take()
        texts: list[str] = []
        goes_on = handler = None
        while True:
            front = self._space if self._bom else _DESIGNATIONS.front(state) if state else b""
            out = converter.run(front, readable, begin, length, 2 * (length - begin + len(front)))
            piece = converter.piece
            written = ffi.buffer(out + 2, piece.written - 2) if self._bom else ffi.buffer(out, piece.written)
            text = codecs.utf_16_le_decode(written, "strict", True)[0]
            kind, end = piece.kind, piece.offset
            if self._is_jis and not goes_on and (kind or not final):
                state = _DESIGNATIONS.after(data, begin, end, state)
            is_cut_off = kind == lib.JKC_LOSS_TRUNCATED and not final
            if not kind or is_cut_off or goes_on:
                if goes_on and not is_cut_off:
                    end = length
                elif goes_on and errors == "replace":
                    text = text[:-1]  # the mark for what is cut off
                self._decoders.give_back(taken)
                return "".join([*texts, text]) if texts else text, end, state
            texts.append(text)
            begin = end
            if (final or not self._is_jis) and (goes_on := self._decoders.that_goes_on(errors)):
                converter = goes_on
                continue
            data = readable = bytes(data)  # so that the error holds no other buffer
            error = UnicodeDecodeError(self.name, data, end, end + piece.length, _REASONS[kind])
            handler = handler or codecs.lookup_error(errors)
            replacement, begin = _answer(handler, error, str)
            texts.append(replacement)

    # --- Text to bytes. ---

    def encode(self, text: str, errors: str, final: bool, state: int) -> tuple[bytes, int]:
        """Encodes.

        The number for how ISO-2022-JP goes on is here its last character where a designation is to be closed, which
        `final` does. Returns the bytes, and how the text goes on.
        """
        pieces: list[bytes] = []
        if self._writes_bom and state == _AT_FRONT:
            pieces.append(self._bom)
            state = 0
        if self._has_ascii and text.isascii():
            data = text.encode("ascii")
            return b"".join([*pieces, data]) if pieces else data, 0
        try:
            units = codecs.utf_16_le_encode(text, "strict")[0]
        except UnicodeEncodeError:  # two surrogates could make a character
            units = codecs.utf_16_le_encode(_SURROGATES.sub("\udc00", text), "surrogatepass")[0]
        converter = taken = self._encoders.take()
        length = len(units)
        begin = index = lost = 0  # in bytes of the units, in characters
        goes_on = handler = None
        while True:
            front, skipped = self._front_of_encoding(converter, state) if state else (b" \0", len(self._space))
            out = converter.run(front, units, begin, length, 3 * (length - begin + len(front)) + 16)
            piece = converter.piece
            written = ffi.buffer(out, piece.written)[skipped:]
            is_done = not piece.kind or goes_on
            end = piece.offset
            if is_done and (final or not self._is_jis):
                state = 0
            else:
                index += (end - begin) // 2 if length == 2 * len(text) else len(units[begin:end].decode("utf-16-le"))
                if self._is_jis and written.endswith(_CLOSING):
                    written = written[:-len(_CLOSING)]
                    state = ord(text[index - 1]) if end > begin else state
                else:
                    state = 0
            if is_done:
                self._encoders.give_back(taken)
                return b"".join([*pieces, written]) if pieces else written, state
            pieces.append(written)
            # In a Unicode form U+FFFD would stand for a loss; and what ISO-2022-JP goes on with must not be lost.
            if (final or not self._is_jis) and not self._bom and (goes_on := self._encoders.that_goes_on(errors)):
                converter, begin = goes_on, end
                continue
            handler = handler or codecs.lookup_error(errors)
            lost += 1
            if lost == _MANY and handler in _PURE_HANDLERS and not self._bom:
                self._encoders.give_back(taken)
                rest, state = self.encode(self._replaced(text[index:], handler), "strict", final, state)
                return b"".join([*pieces, rest]), state
            lost_end = end + piece.length
            reason = "surrogates not allowed" if _SURROGATES.match(text, index) else _NO_MAPPING
            error = UnicodeEncodeError(self.name, text, index, index + 1, reason)
            replacement, after = _answer(handler, error, (str, bytes))
            if isinstance(replacement, str):
                replacement, state = self.encode(replacement, "strict", False, state)
            pieces.append(replacement)
            begin = lost_end if after == index + 1 else self._offset(text, after, index, end)
            index = after

    def _replaced(self, text: str, handler: Handler) -> str:
        """The text with what a handler answers for each character that the encoding lacks."""
        characters = list(set(text) - {"?", "\n"})
        codes = self.encode("\n".join(characters), "replace", True, 0)[0].split(b"\n")
        lost = [c for c, code in zip(characters, codes) if code == b"?"]
        return text.translate({ord(c): handler(UnicodeEncodeError(self.name, c, 0, 1, ""))[0] for c in lost})

    @staticmethod
    def _offset(text: str, index: int, other: int, offset: int) -> int:
        """Where a character stands in UTF-16, another one's place being known."""
        between = codecs.utf_16_le_encode(text[min(index, other):max(index, other)], "surrogatepass")[0]
        return offset + len(between) if index > other else offset - len(between)

    def _front_of_encoding(self, converter: _Converter, state: int) -> tuple[bytes, int]:
        """What brings a converter there, and the length of what it becomes."""
        front = codecs.utf_16_le_encode(chr(state))[0]
        converter.run(front, b"", 0, 0, converter.ROOM)
        return front, converter.piece.written - len(_CLOSING)
