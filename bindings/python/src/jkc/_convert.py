"""Conversions in memory: convert(), decode(), encode()."""
from __future__ import annotations

from typing import Any, Optional

from . import encodings
from ._detect import Detection, DetectionError, detect
from ._losses import Collector, Loss
from ._native import ffi, lib
from ._types import Buffer, Newline
from .codecs import own
from .encodings import BY_CODE_TYPE, Encoding

MAX_LOSSES = 10_000
"""How many losses of a text are told one by one, unless the caller wants more or fewer."""

_POLICIES: dict[str, int] = {
    "strict": lib.JKC_ON_LOSS_STOP,
    "replace": lib.JKC_ON_LOSS_REPLACE,
    "geta": lib.JKC_ON_LOSS_REPLACE,
    "ignore": lib.JKC_ON_LOSS_OMIT,
    "xmlcharrefreplace": lib.JKC_ON_LOSS_ESCAPE,
}
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


class _Stopped(Exception):
    """A conversion has ended at its first loss."""


def _run(data: Buffer, source: int, target: int, options: Any) -> "Converted":
    out = ffi.new("uint8_t **")
    length = ffi.new("size_t *")
    with ffi.from_buffer("uint8_t[]", data) as text:
        status = lib.jkc_convert_memory(source, target, text, len(text), options, out, length, ffi.NULL)
    if status == lib.JKC_ELOSS:
        raise _Stopped
    if status != lib.JKC_SUCCESS:
        raise MemoryError  # all else is seen to before
    try:
        return Converted(ffi.buffer(out[0], length[0]))
    finally:
        lib.jkc_free(out[0])


def codec_name(encoding: Encoding) -> str:
    """The codec that reads and writes as the library does: Python's own where that is the same."""
    return encoding.python if encoding.is_unicode else own(encoding).name


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
    return own(source).decode(data, errors)[0]  # type: ignore[arg-type]


def encode(text: str, encoding: str = "utf-8", errors: str = "strict") -> bytes:
    """Encodes a text.

    :param errors: what becomes of characters that the encoding lacks: the name of any error handler, as for str.encode().
    :raises UnicodeEncodeError: with `errors="strict"`.
    :raises LookupError: for an encoding or error handler that does not exist.
    """
    return own(encodings.lookup(encoding)).encode(text, errors)[0]


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
        converted = _run(data, source.code_type, target.code_type, collector.options)
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
