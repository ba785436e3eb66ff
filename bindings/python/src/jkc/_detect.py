"""What a text is in: detect(), Detector, Detection."""
from __future__ import annotations

import os
from types import TracebackType
from typing import Any, NamedTuple, Optional, Union

from . import encodings
from ._native import ffi, lib
from ._types import BinaryReader, Buffer, Kind, Newline
from .encodings import BY_CODE_TYPE, ENCODINGS, Encoding

PIECE = 1 << 18

_NEWLINES: tuple[tuple[int, Newline], ...] = (
    (lib.JKC_LINE_LF, "\n"),
    (lib.JKC_LINE_CR, "\r"),
    (lib.JKC_LINE_CRLF, "\r\n"),
)
_KINDS: dict[int, Kind] = {
    lib.JKC_TYPE_EMPTY: "empty",
    lib.JKC_DECISION_UNDECIDED: "undecided",
    lib.JKC_DECISION_NONE: "unknown",
    lib.JKC_DECISION_BINARY: "binary",
}


class Evidence(NamedTuple):
    """What speaks for and against one encoding; counts are in bytes. No more than 11 ill-formed bytes are counted."""

    encoding: str
    """Its name in Python."""
    valid: int
    """In characters beyond ASCII that the encoding has."""
    ill_formed: int
    """In sequences that it lacks."""
    kana: int
    """In hiragana and katakana."""
    lone_halfwidth: int
    """In half-width katakana that stand alone, which speaks against it."""
    first_error: Optional[int]
    """Offset of the first of `ill_formed`."""


class Detection(NamedTuple):
    """What was found of a text."""

    encoding: Optional[str]
    """The name of the encoding in Python, for bytes.decode() and open(); None where `kind` is not text or empty."""
    iana: Optional[str]
    """Its name for headers of mails and pages."""
    kind: Kind
    """text; empty (told as ASCII); undecided: as likely in each of `candidates`; unknown: text that fits no encoding,
    damaged or a mix of several; binary: no text."""
    confidence: float
    """How sure that is, from 0 to 1."""
    candidates: tuple[str, ...]
    """The encodings that are as likely: several where the text alone does not decide, one where it does; else none."""
    bom: bool
    """Whether it begins with a byte-order mark."""
    newlines: tuple[Newline, ...]
    """The kinds of line ends in it."""
    rule: str
    """The rule that decided, such as "well-formed UTF-8"."""
    evidence: tuple[Evidence, ...]
    """What speaks for and against each encoding that was looked at."""
    length: int
    """Its bytes."""

    def as_dict(self) -> dict[str, Any]:
        """Returns what chardet.detect() would: a dict with encoding, confidence and language."""
        japanese = self.encoding is not None and not self.bom and self.encoding not in ("ascii", "utf-8")
        is_utf16 = self.encoding is not None and self.encoding.startswith("utf-16")
        return {
            "encoding": self.encoding,
            "confidence": self.confidence if self.encoding is not None else 0.0,
            "language": "Japanese" if japanese and not is_utf16 else "",
        }


class DetectionError(UnicodeError):
    """A text whose encoding cannot be told; `detection` says more. Name the encoding to go on."""

    def __init__(self, detection: Detection):
        self.detection = detection
        if detection.kind == "undecided":
            message = "the text is as likely in " + " or ".join(detection.candidates) + ": name its encoding"
        elif detection.kind == "unknown":
            message = "the text fits no encoding: it is damaged, or a mix of several"
        else:
            message = "this is no text"
        super().__init__(message)


def _detection(found: Any, preferred: Optional[Encoding]) -> Detection:
    decision = found.decision
    open_types = [e for e in ENCODINGS if found.open & (1 << (e.code_type + 5))]
    if preferred in open_types:
        decision = preferred.code_type
    encoding: Optional[Encoding] = BY_CODE_TYPE.get(decision)
    kind = _KINDS.get(decision, "text")
    if kind == "empty":
        encoding = BY_CODE_TYPE[lib.JKC_TYPE_ASCII]
    # UTF-16 is told by its own line ends, all else by those of its bytes.
    line_ends = found.line_ends_bytes
    if decision in (lib.JKC_TYPE_UTF16BE, lib.JKC_TYPE_UTF16BE_BOM):
        line_ends = found.line_ends_utf16be
    elif decision in (lib.JKC_TYPE_UTF16LE, lib.JKC_TYPE_UTF16LE_BOM):
        line_ends = found.line_ends_utf16le
    evidence = tuple(
        Evidence(BY_CODE_TYPE[e.type].python, e.valid, e.ill_formed, e.kana, e.penalty,
                 e.first_error if e.first_error >= 0 else None)
        for e in found.evidence
    )
    return Detection(
        encoding=encoding.python if encoding else None,
        iana=encoding.iana if encoding else None,
        kind=kind,
        confidence=found.confidence / 100,
        candidates=tuple(e.python for e in open_types or ([encoding] if encoding else [])),
        bom=encoding is not None and encoding.bom,
        newlines=tuple(name for bit, name in _NEWLINES if line_ends & bit),
        rule=ffi.string(lib.jkc_rule_name(found.rule)).decode(),
        evidence=evidence,
        length=found.length,
    )


class Detector:
    """Tells which encoding a text is in that comes in pieces, in constant memory.

    It is used as chardet's UniversalDetector is, and as a context manager, which closes it. It does not stop early.
    Different detectors may be used in several threads at once.

    >>> with Detector() as detector:
    ...     detector.feed("日本語".encode("cp932"))
    >>> detector.result["encoding"]
    'cp932'
    """

    def __init__(self, preferred: Optional[str] = None):
        """`preferred` is the encoding that wins a tie in which it takes part."""
        self._preferred = encodings.lookup(preferred) if preferred is not None else None
        handle = ffi.new("JkcDetector **")
        if lib.jkc_detector_create(handle, ffi.NULL) != lib.JKC_SUCCESS:
            raise MemoryError
        self._detector = ffi.gc(handle[0], lib.jkc_detector_release)
        self._detection: Optional[Detection] = None

    def feed(self, data: Buffer) -> None:
        """Looks at a piece of the text. Once the detector is closed, pieces are passed over."""
        with ffi.from_buffer("uint8_t[]", data) as piece:
            lib.jkc_detector_feed(self._detector, piece, len(piece))

    def close(self) -> Detection:
        """Ends the text and tells what was found."""
        if self._detection is None:
            found = ffi.new("JkcDetection *")
            found.size = ffi.sizeof("JkcDetection")
            lib.jkc_detector_finish(self._detector, found)
            self._detection = _detection(found, self._preferred)
        return self._detection

    def reset(self) -> None:
        """Makes the detector as good as new, for another text."""
        lib.jkc_detector_reset(self._detector)
        self._detection = None

    @property
    def done(self) -> bool:
        """Whether the detector is closed."""
        return self._detection is not None

    @property
    def result(self) -> dict[str, Any]:
        """What was found, as chardet tells it; all empty before close()."""
        if self._detection is None:
            return {"encoding": None, "confidence": 0.0, "language": ""}
        return self._detection.as_dict()

    def __enter__(self) -> Detector:
        return self

    def __exit__(self, kind: Optional[type[BaseException]], value: Optional[BaseException],
                 traceback: Optional[TracebackType]) -> None:
        self.close()


def detect(source: Union[Buffer, str, os.PathLike[str], BinaryReader], *, preferred: Optional[str] = None) -> Detection:
    """Tells which encoding a text is in.

    :param source: the text: bytes or any other buffer, the path of a file (str or os.PathLike), or a file that is open
        for reading bytes, which is read to its end. Files are read in constant memory.
    :param preferred: the encoding that wins a tie in which it takes part.
    :raises OSError: where a file cannot be read.
    :raises LookupError: for an encoding that does not exist.
    """
    detector = Detector(preferred)
    if isinstance(source, (str, os.PathLike)):
        with open(source, "rb", buffering=0) as file:
            feed_file(detector, file)
    elif hasattr(source, "read") and not hasattr(source, "resize"):  # a mapped file is memory that can be read, too
        feed_file(detector, source)
    else:
        detector.feed(source)  # type: ignore[arg-type]
    return detector.close()


def feed_file(detector: Detector, file: Any) -> None:
    """Feeds what is left of a file."""
    if not hasattr(file, "readinto"):
        while piece := file.read(PIECE):
            detector.feed(piece)
        return
    room = memoryview(bytearray(PIECE))
    while length := file.readinto(room):
        detector.feed(room[:length])
