"""Conversions in memory: convert(), decode(), encode()."""
from __future__ import annotations

import codecs
from typing import Any, Callable, Optional, TypeVar

from . import encodings
from ._detect import Detection, DetectionError, detect
from ._losses import Collector, Loss
from ._native import ffi, lib
from ._types import Buffer, Newline
from .encodings import BY_CODE_TYPE, Encoding

T = TypeVar("T")

MAX_LOSSES = 10_000
"""How many losses of a text are told one by one, unless the caller wants more or fewer."""

_POLICIES: dict[str, int] = {
    "strict": lib.JKC_ON_LOSS_STOP,
    "replace": lib.JKC_ON_LOSS_REPLACE,
    "geta": lib.JKC_ON_LOSS_REPLACE,
    "ignore": lib.JKC_ON_LOSS_OMIT,
    "xmlcharrefreplace": lib.JKC_ON_LOSS_ESCAPE,
}
# In these ASCII text is itself.
_HAVE_ASCII = {lib.JKC_TYPE_SJIS, lib.JKC_TYPE_EUC, lib.JKC_TYPE_EUC_20932, lib.JKC_TYPE_EUC_51932, lib.JKC_TYPE_EUC_MS,
               lib.JKC_TYPE_UTF8, lib.JKC_TYPE_ASCII}
_LINE_TYPES = {None: lib.JKC_LINE_KEEP, "\n": lib.JKC_LINE_LF, "\r": lib.JKC_LINE_CR, "\r\n": lib.JKC_LINE_CRLF}


def _options(errors: str, newline: Optional[str] = None, compose: bool = False) -> Any:
    options = ffi.new("JkcConverterOptions *")
    options.size = ffi.sizeof("JkcConverterOptions")
    if errors not in _POLICIES:
        raise LookupError(f"unknown way to treat losses: {errors} (known: {', '.join(_POLICIES)})")
    if newline not in _LINE_TYPES:
        raise ValueError(f"illegal newline value: {newline!r}")
    options.on_loss = _POLICIES[errors]
    options.geta = errors == "geta"
    options.line_type = _LINE_TYPES[newline]
    options.compose = compose
    return options


# The library only reads them: all threads share them.
_PLAIN = {errors: _options(errors) for errors in ("strict", "replace", "ignore")}


class _Stopped(Exception):
    """A conversion has ended at its first loss."""


def _run(data: Buffer, source: int, target: int, options: Any, take: Callable[[Any], T]) -> T:
    """Converts and hands over the output, as a buffer that is valid during the call."""
    out = ffi.new("uint8_t **")
    length = ffi.new("size_t *")
    with ffi.from_buffer("uint8_t[]", data) as text:
        status = lib.jkc_convert_memory(source, target, text, len(text), options, out, length, ffi.NULL)
    if status == lib.JKC_ELOSS:
        raise _Stopped
    if status != lib.JKC_SUCCESS:
        raise MemoryError  # all else is seen to before
    try:
        return take(ffi.buffer(out[0], length[0]))
    finally:
        lib.jkc_free(out[0])


def _first_loss(data: Buffer, source: int, target: int) -> Loss:
    collector = Collector(_PLAIN["strict"], 1)
    try:
        _run(data, source, target, collector.options, len)
    except _Stopped:
        pass
    return collector.losses(data, BY_CODE_TYPE[source])[0]


def _to_str(utf16: Any) -> str:
    return codecs.utf_16_le_decode(utf16)[0]


def decode_as(data: Buffer, source: int, errors: str) -> str:
    """Decodes from a code type. `errors` is strict, replace or ignore. Raises UnicodeDecodeError."""
    try:
        return _run(data, source, lib.JKC_TYPE_UTF16LE, _PLAIN[errors], _to_str)
    except _Stopped:
        pass
    loss = _first_loss(data, source, lib.JKC_TYPE_UTF16LE)
    reason = {
        "ill-formed": "illegal multibyte sequence",
        "unmappable": "code without a character",
        "truncated": "incomplete multibyte sequence",
    }[loss.kind]
    raise UnicodeDecodeError(BY_CODE_TYPE[source].python, bytes(data), loss.offset, loss.offset + loss.length, reason)


def encode_as(text: str, target: int, errors: str) -> bytes:
    """Encodes to a code type. `errors` is strict, replace or ignore. Raises UnicodeEncodeError."""
    # The library passes a byte-order mark over: a character U+FEFF at the front needs one in front of it.
    mark = "\ufeff" if text.startswith("\ufeff") else ""
    units = (mark + text).encode("utf-16-le", "surrogatepass")
    try:
        return _run(units, lib.JKC_TYPE_UTF16LE, target, _PLAIN[errors], bytes)
    except _Stopped:
        pass
    loss = _first_loss(units, lib.JKC_TYPE_UTF16LE, target)
    start = len(units[: loss.offset].decode("utf-16-le", "surrogatepass")) - len(mark)
    reason = "illegal multibyte sequence" if loss.kind == "unmappable" else "surrogates not allowed"
    raise UnicodeEncodeError(BY_CODE_TYPE[target].python, text, start, start + 1, reason)


def codec_name(encoding: Encoding) -> str:
    """The codec that reads and writes as the library does: Python's own where that is the same."""
    return encoding.python if encoding.is_unicode or encoding.python == "ascii" else "jkc-" + encoding.python.replace("_", "-")


def source_encoding(data: Buffer, encoding: Optional[str]) -> tuple[Encoding, Optional[Detection]]:
    """The encoding of this name, or the one that is detected."""
    if encoding is not None:
        return encodings.lookup(encoding), None
    detection = detect(data)
    return detected_encoding(detection), detection


def detected_encoding(detection: Detection) -> Encoding:
    """What was detected; raises DetectionError where that is open."""
    if detection.encoding is None:
        raise DetectionError(detection)
    return encodings.lookup(detection.encoding)


def decode(data: Buffer, encoding: Optional[str] = None, errors: str = "strict") -> str:
    """Decodes a text. A byte-order mark is dropped.

    :param data: bytes or any other buffer, which is not copied.
    :param encoding: its encoding; None: it is detected.
    :param errors: what becomes of ill-formed bytes and of codes without a character: the name of any error handler, as
        for bytes.decode().
    :raises UnicodeDecodeError: with `errors="strict"`.
    :raises DetectionError: where the encoding cannot be told.
    :raises LookupError: for an encoding or error handler that does not exist.
    """
    source, _ = source_encoding(data, encoding)
    if errors not in _PLAIN or source.code_type == lib.JKC_TYPE_ASCII:
        return codecs.decode(bytes(data), codec_name(source), errors)
    return decode_as(data, source.code_type, errors)


def encode(text: str, encoding: str = "utf-8", errors: str = "strict") -> bytes:
    """Encodes a text.

    :param errors: what becomes of characters that the encoding lacks: the name of any error handler, as for str.encode().
    :raises UnicodeEncodeError: with `errors="strict"`.
    :raises LookupError: for an encoding or error handler that does not exist.
    """
    target = encodings.lookup(encoding)
    if target.code_type in _HAVE_ASCII and text.isascii():
        return text.encode("ascii")
    if errors not in _PLAIN or target.code_type == lib.JKC_TYPE_ASCII:
        return codecs.encode(text, codec_name(target), errors)
    return encode_as(text, target.code_type, errors)


class ConversionError(UnicodeError):
    """A text that cannot be converted without loss; `loss` is the first one."""

    def __init__(self, loss: Loss, source: str, target: str):
        self.loss = loss
        self.source = source
        self.target = target
        super().__init__(f"{source} to {target}: {loss}")


class Converted(bytes):
    """Bytes that a conversion has made, and what it tells beside them."""

    source: str
    """The encoding that the text was in, as Python names it."""
    target: str
    """The encoding that these bytes are in."""
    detection: Optional[Detection]
    """What was detected; None where the encoding was told."""
    losses: tuple[Loss, ...]
    """What did not come through as it was, in the order of the text: the first of them where there are very many."""
    lost: int
    """How many losses there were."""


def convert(
    data: Buffer,
    to: str = "utf-8",
    encoding: Optional[str] = None,
    *,
    errors: str = "strict",
    newline: Optional[Newline] = None,
    bom: Optional[bool] = None,
    compose: bool = False,
    max_losses: int = MAX_LOSSES,
) -> Converted:
    """Converts a text from one encoding to another.

    :param data: bytes or any other buffer, which is not copied.
    :param to: the encoding wanted. ASCII counts as Shift_JIS here, of which it is a part.
    :param encoding: the encoding of the text; None: it is detected.
    :param errors: what becomes of a loss: strict: ConversionError; replace: U+FFFD, or ? where the target is not Unicode;
        geta: the geta mark for ?; ignore: nothing; xmlcharrefreplace: &#x20BB7; for a character that the target lacks.
    :param newline: the line ends wanted; None: each stays as it is.
    :param bom: whether the text is to begin with a byte-order mark; None: as the name of the encoding says.
    :param compose: whether letters are composed with combining marks that follow them, as in names of files from a Mac.
    :param max_losses: how many losses are told one by one.
    :raises ConversionError: at the first loss, with `errors="strict"`.
    :raises DetectionError: where the encoding cannot be told.
    :raises LookupError: for an encoding or a way to treat losses that does not exist.
    """
    target = _with_mark(encodings.lookup(to), bom)
    source, detection = source_encoding(data, encoding)
    collector = Collector(_options(errors, newline, compose), 1 if errors == "strict" else max_losses)
    try:
        converted = _run(data, source.code_type, target.code_type, collector.options, Converted)
    except _Stopped:
        raise ConversionError(collector.losses(data, source)[0], source.python, target.python) from None
    converted.source, converted.target, converted.detection = source.python, target.python, detection
    converted.losses = collector.losses(data, source)
    converted.lost = collector.total
    return converted


def _with_mark(target: Encoding, bom: Optional[bool]) -> Encoding:
    if bom is None or bom == target.bom:
        return target
    other = BY_CODE_TYPE.get(target.code_type + (1 if bom else -1))
    if other is None or not target.is_unicode:
        raise ValueError(f"{target.python} has no byte-order mark")
    return other
