"""Conversions in memory, and files as streams."""
from __future__ import annotations

import os
import threading
from array import array
from pathlib import Path

import pytest

import jkc
from jkc.encodings import ENCODINGS

# Line ends of each kind, a character beyond the BMP, one that most encodings lack, half-width katakana.
TEXT = "一行目\r\nabc\r二行目ｶﾅ☃\n\n𠮷野家で①☃を\n"


def test_every_encoding_reads_what_it_writes() -> None:
    text = "日本語カナ、abc\n"
    for encoding in ENCODINGS[1:]:
        told = jkc.convert(text.encode(), encoding.aliases[0])
        assert told.losses == () and (told.source, told.target) == ("utf-8", encoding.python)
        assert told == jkc.encode(text, encoding.aliases[0])
        assert jkc.decode(told, encoding.aliases[0]) == text
        assert jkc.decode(memoryview(bytes(told)), encoding.aliases[0]) == text


def places(text: str, lost: str) -> list[tuple[str, int, int]]:
    """Where characters stand, found in another way."""
    found, line, column = [], 1, 1
    for i, character in enumerate(text):
        if character in lost:
            found.append((character, line, column))
        column += 1
        if character == "\n" or (character == "\r" and text[i + 1] != "\n"):
            line, column = line + 1, 1
    return found


@pytest.mark.parametrize("source", ["utf-8", "utf-8-sig", "utf-16", "utf-16-be", "UTF-16BE-BOM"])
def test_losses_and_their_places(source: str) -> None:
    data = jkc.encode(TEXT, source)
    converted = jkc.convert(data, "cp932", source, errors="xmlcharrefreplace", newline="\n")
    assert [(loss.character, loss.line, loss.column) for loss in converted.losses] == places(TEXT, "☃𠮷")
    assert all(jkc.decode(loss.data, jkc.encodings.lookup(source).python.replace("utf-16", "utf-16-be" if "B" in source
               or "be" in source else "utf-16-le").replace("-be-be", "-be")) == loss.character
               and data[loss.offset :].startswith(loss.data) for loss in converted.losses)
    assert b"&#x20BB7;" in converted and b"\r" not in converted and converted.lost == 3
    with pytest.raises(jkc.ConversionError, match=r"line 3, column 6: U\+2603 \(☃\)"):
        jkc.convert(data, "cp932", source)


@pytest.mark.parametrize(
    ("data", "source", "told"),
    [
        (b"ab\x82\n\x82", "cp932", ["line 1, column 3: ill-formed bytes 82", "line 2, column 1: cut character 82"]),
        (b"\r\n\x85\x40", "cp932", ["line 2, column 1: code without a character 85 40"]),
        (b"\xef\xbb\xbfab\xff", "utf-8", ["line 1, column 3: ill-formed bytes FF"]),
        (b"a\n\x1b$B$\"$$\xff\x1b(B", "iso-2022-jp", ["line 2, column 3: ill-formed bytes FF"]),
    ],
)
def test_losses_of_the_source(data: bytes, source: str, told: list[str]) -> None:
    converted = jkc.convert(data, "utf-8", source, errors="replace")
    assert [str(loss) for loss in converted.losses] == told
    assert jkc.convert(data, "utf-8", source, errors="replace", max_losses=0).lost == len(told)


def test_losses_as_errors_of_decode_and_encode() -> None:
    with pytest.raises(UnicodeDecodeError) as decoding:
        jkc.decode(bytearray("あ".encode("cp932") + b"\x85\x40"), "cp932")
    assert (decoding.value.start, decoding.value.end) == (2, 4)
    for text, index in (("𠮷", 0), ("a𠮷☃", 1), ("\ufeffあ☃", 0), ("か\ud842", 1)):
        with pytest.raises(UnicodeEncodeError) as encoding:
            jkc.encode(text, "cp932")
        assert (encoding.value.start, encoding.value.object) == (index, text)
    assert jkc.encode("\ufeffx", "utf-16-le") == b"\xff\xfex\0"
    assert jkc.encode("☃あ", "cp932", "replace") == b"?\x82\xa0" and jkc.encode("☃あ", "cp932", "ignore") == b"\x82\xa0"
    assert jkc.convert("☃".encode(), "cp932", errors="geta") == b"\x81\xac"
    assert jkc.decode(b"\x82\xa0\xff", "cp932", "replace") == "あ\ufffd"


def test_marks_and_what_is_refused() -> None:
    assert jkc.convert(b"\xef\xbb\xbfa", "utf-8") == b"a"
    assert jkc.convert(b"a", "utf-8", bom=True) == b"\xef\xbb\xbfa"
    assert jkc.convert(b"a", "utf-16", bom=False) == b"a\0"
    assert jkc.convert("が".encode(), "cp932", compose=True) == "が".encode("cp932")
    for refused in ({"to": "cp932", "bom": True}, {"newline": "\v"}):
        with pytest.raises(ValueError):
            jkc.convert(b"a", **refused)  # type: ignore[arg-type]
    for unknown in ({"to": "koi8-r"}, {"encoding": "koi8-r"}, {"errors": "nothing"}):
        with pytest.raises(LookupError):
            jkc.convert(b"a", **unknown)  # type: ignore[arg-type]
    assert jkc.decode(array("H", b"ab"), "cp932") == "ab"
    with pytest.raises(UnicodeDecodeError):
        jkc.decode(b"\x82\xa0", "ascii")


def test_threads_have_conversions_of_their_own() -> None:
    data = TEXT.encode() * 2000
    wanted = jkc.convert(data, "euc-jp", "utf-8", errors="replace")
    differing: list[int] = []

    def work(number: int) -> None:
        for _ in range(5):
            converted = jkc.convert(data, "euc-jp", "utf-8", errors="replace")
            if converted != wanted or converted.losses != wanted.losses or jkc.detect(data).encoding != "utf-8":
                differing.append(number)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert differing == []




@pytest.mark.parametrize("name", ["cp932", "eucjp-ms", "cp51932", "cp20932", "cp50221", "utf-8-sig", "utf-16"])
def test_files_are_written_and_read(tmp_path: Path, name: str) -> None:
    path = tmp_path / "file"
    text = "一行目\n二行目の文章です。\n"
    with jkc.open(path, "w", encoding=name, newline="\r\n") as file:
        file.write(text)
    assert path.read_bytes() == jkc.encode(text.replace("\n", "\r\n"), name)
    with jkc.open(path, encoding=name, newline="") as file:
        assert file.readlines() == [line + "\r\n" for line in text.splitlines()]
    with jkc.open(path) as file:  # detected; of the forms of EUC-JP the plainest
        assert file.read() == text
    with jkc.open(path, "a") as file:
        file.write("三行目\n")
    assert jkc.decode(path.read_bytes(), name).endswith("目の文章です。\r\n三行目\n")


def test_files_that_are_odd(tmp_path: Path) -> None:
    path = tmp_path / "file"
    with jkc.open(path, "a") as file:
        file.write("日本語")
    assert path.read_text("utf-8") == "日本語"
    path.write_bytes("日本語の文章です☃\n".encode() + "日本語の文章です\n".encode("cp932"))
    with pytest.raises(jkc.DetectionError):
        jkc.open(path)
    with jkc.open(path, encoding="cp932", errors="replace") as file:
        assert file.read().endswith("日本語の文章です\n")
    with pytest.raises(ValueError):
        jkc.open(path, "rb")
    end, begin = os.pipe()
    os.write(begin, "日本語の文章です。\n".encode("euc_jp"))
    os.close(begin)
    with jkc.open(end) as file:
        assert file.readlines() == ["日本語の文章です。\n"]
