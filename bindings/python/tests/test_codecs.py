"""The codecs: what Python's own multibyte codecs are tested for."""
import codecs
import io

import pytest

import jkc.codecs  # noqa: F401

# A text that each can write, and its bytes where Python's own codec of another name writes the same.
TEXT = "abc 日本語ｱｲｳ\r\nあ表ソ構\tカ゛x\n終"
CODECS = [
    ("jkc-cp932", "cp932"),
    ("jkc-euc-jp", "euc_jp"),
    ("cp51932", "euc_jp"),
    ("cp20932", "euc_jp"),
    ("eucjp-ms", "euc_jp"),
    ("cp50221", "iso2022_jp_ext"),
    ("jkc-iso-2022-jp-2004", "iso2022_jp_ext"),
    ("jkc-utf-8", "utf-8"),
    ("jkc-utf-8-sig", "utf-8-sig"),
    ("jkc-utf-16-le", "utf-16-le"),
    ("jkc-utf-16-be", "utf-16-be"),
    ("jkc-utf-16", "utf-16"),
]


@pytest.mark.parametrize(("ours", "theirs"), CODECS)
class TestText:
    """A text in each encoding, as a whole and in pieces."""

    def test_is_encoded_and_decoded(self, ours, theirs):
        data = TEXT.encode(theirs)
        assert TEXT.encode(ours) == data
        assert data.decode(ours) == TEXT
        for buffer in (bytearray(data), memoryview(data)):
            assert codecs.decode(buffer, ours) == TEXT

    def test_comes_in_pieces(self, ours, theirs):
        data = TEXT.encode(theirs)
        for size in (*range(1, 8), len(data)):
            decoder = codecs.getincrementaldecoder(ours)()
            pieces = [decoder.decode(data[at:at + size]) for at in range(0, len(data), size)]
            assert "".join(pieces) + decoder.decode(b"", True) == TEXT
            encoder = codecs.getincrementalencoder(ours)()
            parts = [encoder.encode(TEXT[at:at + size]) for at in range(0, len(TEXT), size)]
            assert b"".join(parts) + encoder.encode("", True) == data
        for at in range(len(data)):
            assert "".join(codecs.iterdecode([data[:at], data[at:]], ours)) == TEXT

    def test_is_a_stream(self, ours, theirs):
        data = TEXT.encode(theirs)
        for call, sizes in (("read", [None, -1, 1, 2, 3, 64]), ("readline", [None, -1, 1, 5, 64])):
            for size in sizes:
                reader = codecs.getreader(ours)(io.BytesIO(data))
                assert "".join(iter(lambda: getattr(reader, call)(*([] if size is None else [size])), "")) == TEXT
        assert codecs.getreader(ours)(io.BytesIO(data)).readlines() == TEXT.splitlines(True)
        raw = io.BytesIO()
        writer = codecs.getwriter(ours)(raw)
        for character in TEXT:
            writer.write(character)
        writer.reset()
        assert raw.getvalue() == data

    def test_is_a_file(self, ours, theirs, tmp_path):
        path = tmp_path / "text"
        with open(path, "w", encoding=ours, newline="") as file:
            for character in TEXT:
                file.write(character)
            file.write("\n")
        assert path.read_bytes() == (TEXT + "\n").encode(theirs)
        with open(path, encoding=ours, newline="") as file:
            assert file.read() == TEXT + "\n"
