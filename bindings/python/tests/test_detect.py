"""Detection."""
from __future__ import annotations

import io
import mmap
from array import array
from pathlib import Path

import pytest

import jkc

PROSE = "日本語の文章です。これはテストです。\r\n"


@pytest.mark.parametrize(
    ("text", "kind", "encoding"),
    [
        (b"", "empty", "ascii"),
        (b"abc\n", "text", "ascii"),
        (PROSE.encode("cp932"), "text", "cp932"),
        (PROSE.encode("euc_jp"), "text", "euc_jp"),
        (PROSE.encode("iso2022_jp"), "text", "cp50221"),
        (PROSE.encode("utf-8"), "text", "utf-8"),
        (PROSE.encode("utf-8-sig"), "text", "utf-8-sig"),
        (PROSE.encode("utf-16"), "text", "utf-16"),
        (PROSE.encode("utf-16-be"), "text", "utf-16-be"),
        (b"\xe4\xd8\xe5\xa5\n", "undecided", None),
        (PROSE.encode("cp932") * 3 + PROSE.encode("utf-8") * 3, "unknown", None),
        (bytes(range(32)) * 40, "binary", None),
    ],
)
def test_kinds(text: bytes, kind: str, encoding: str | None) -> None:
    found = jkc.detect(text)
    assert (found.kind, found.encoding, found.length) == (kind, encoding, len(text))
    assert 0 < found.confidence <= 1
    assert found.as_dict()["encoding"] == encoding
    if encoding is None:
        with pytest.raises(jkc.DetectionError) as error:
            jkc.decode(text)
        assert error.value.detection == found
    else:  # the name is one that Python or this package knows
        assert jkc.decode(text, encoding) == jkc.decode(text)


def test_what_is_told_beside() -> None:
    data = PROSE.encode("cp932")
    found = jkc.detect(data + b"x\n")
    assert found.newlines == ("\n", "\r\n")
    assert (found.iana, found.rule, found.bom) == ("Shift_JIS", "likeliest characters", False)
    evidence = {e.encoding: e for e in found.evidence}
    assert evidence["cp932"].ill_formed == 0 and evidence["cp932"].first_error is None
    assert evidence["utf-8"].first_error == 0
    assert found.as_dict() == {"encoding": "cp932", "confidence": found.confidence, "language": "Japanese"}
    assert jkc.detect("\n".join("かな").encode("utf-16")).newlines == ("\n",)
    tie = jkc.detect(b"\xe4\xd8\xe5\xa5\n")
    assert tie.candidates == ("cp932", "euc_jp")
    preferred = jkc.detect(b"\xe4\xd8\xe5\xa5\n", preferred="Shift_JIS")
    assert (preferred.encoding, preferred.kind, preferred.candidates) == ("cp932", "text", tie.candidates)


def test_sources(tmp_path: Path) -> None:
    data = PROSE.encode("euc_jp") * 20_000  # longer than a piece
    path = tmp_path / "text"
    path.write_bytes(data)
    wanted = jkc.detect(data)
    assert jkc.detect(path) == jkc.detect(str(path)) == jkc.detect(io.BytesIO(data)) == wanted
    assert jkc.detect(bytearray(data)) == jkc.detect(memoryview(data)) == jkc.detect(array("H", data)) == wanted
    with path.open("rb") as file:
        assert jkc.detect(file) == wanted
        with mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
            assert jkc.detect(mapped) == wanted  # and lets go of it, or leaving this block would raise
    with pytest.raises(FileNotFoundError):
        jkc.detect(tmp_path / "none")
    with pytest.raises(TypeError):
        jkc.detect(io.StringIO("text"))  # type: ignore[arg-type]
    with pytest.raises(LookupError):
        jkc.detect(data, preferred="koi8-r")


def test_detector_is_fed_and_used_again() -> None:
    detector = jkc.Detector()
    assert not detector.done and detector.result["encoding"] is None
    for name in ("cp932", "euc_jp", "utf-8"):
        with detector:
            for byte in PROSE.encode(name):
                detector.feed(bytes([byte]))
        assert detector.done and detector.result["encoding"] == name
        assert detector.close().encoding == name
        detector.reset()
