"""The codecs: what Python's own multibyte codecs are tested for."""
import codecs
import io
from concurrent.futures import ThreadPoolExecutor

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
        """Each in another codec, which goes on where the one before was."""
        data = TEXT.encode(theirs)

        def in_pieces(factory, call, whole, size):
            pieces, state = [], factory().getstate()
            for at in [*range(0, len(whole), size), None]:
                codec = factory()
                codec.setstate(state)
                pieces.append(getattr(codec, call)(whole[:0] if at is None else whole[at:at + size], at is None))
                state = codec.getstate()
            codec.reset()
            assert pieces[0][:0].join(pieces) == getattr(codec, call)(whole, True)
            return pieces[0][:0].join(pieces)

        for size in (*range(1, 8), len(data)):
            assert in_pieces(codecs.getincrementaldecoder(ours), "decode", data, size) == TEXT
            assert in_pieces(codecs.getincrementalencoder(ours), "encode", TEXT, size) == data

    def test_is_a_stream(self, ours, theirs):
        data = TEXT.encode(theirs)
        for call, sizes in (("read", [None, -1, 1, 2, 3, 64]), ("readline", [None, -1, 1, 5, 64])):
            for size in sizes:
                reader = codecs.getreader(ours)(io.BytesIO(data))
                assert "".join(iter(lambda: getattr(reader, call)(*([] if size is None else [size])), "")) == TEXT
        writer = codecs.getwriter(ours)(io.BytesIO())
        for character in TEXT:
            writer.write(character)
        writer.seek(0)
        assert writer.stream.getvalue() == data

    def test_is_a_file(self, ours, theirs, tmp_path):
        path = tmp_path / "text"
        with open(path, "w", encoding=ours, newline="") as file:
            for character in TEXT:
                file.write(character)
            file.write("\n")
        assert path.read_bytes() == (TEXT + "\n").encode(theirs)
        with open(path, encoding=ours, newline="") as file:
            assert file.read() == TEXT + "\n"

    def test_is_found_again_in_a_file(self, ours, theirs, tmp_path):
        path = tmp_path / "text"
        path.write_bytes(TEXT.encode(theirs))
        with open(path, encoding=ours, newline="") as file:
            places = [(file.tell(), TEXT)]
            for count in range(1, len(TEXT)):
                file.read(1)
                places.append((file.tell(), TEXT[count:]))
            for place, rest in reversed(places):
                file.seek(place)
                assert file.read() == rest


def decoded(codes, codec):
    """What each code is; None where something is lost."""
    texts = b"\n".join(codes).decode(codec, "replace").split("\n")
    assert len(texts) == len(codes)
    return [None if "\ufffd" in text else text for text in texts]


def encoded(characters, codec):
    """The code of each character that has one."""
    codes = "\n".join(characters).encode(codec, "replace").split(b"\n")
    assert len(codes) == len(characters)
    return {c: code for c, code in zip(characters, codes) if code != b"?" or c == "?"}


CHARACTERS = [chr(c) for c in range(0x30000) if c != 0x0A and not 0xD800 <= c <= 0xDFFF]
ONE_BYTE = [bytes([code]) for code in range(256) if code != 0x0A]
TWO_BYTES = [bytes([lead, trail]) for lead in range(0x80, 0x100) for trail in range(0x40, 0x100)]
THREE_BYTES = [bytes([0x8F, row, cell]) for row in range(0xA1, 0xFF) for cell in range(0xA1, 0xFF)]
# Without the single bytes that Python's codec takes for a control character and private ones.
SJIS = [c for c in ONE_BYTE if c not in (b"\x80", b"\xa0", b"\xfd", b"\xfe", b"\xff")] + [
    c for c in TWO_BYTES if 0x81 <= c[0] <= 0x9F or 0xE0 <= c[0] <= 0xFC]
FULL_WIDTH = "－￠￡￢￤"  # of which cp20932 writes the codes of the standard's


@pytest.mark.parametrize(
    ("ours", "theirs", "codes", "read", "written"),
    [
        ("jkc-cp932", "cp932", SJIS, [], "\x80\uf8f0\uf8f1\uf8f2\uf8f3¥‾"),
        ("cp20932", "euc_jp", ONE_BYTE + TWO_BYTES + THREE_BYTES, [b"\x8f\xa2\xb7"], FULL_WIDTH),
    ],
)
def test_tables_are_those_of_python(ours, theirs, codes, read, written):
    """But for the codes `read` and the characters `written`."""
    assert [c for c, ours, theirs in zip(codes, decoded(codes, ours), decoded(codes, theirs)) if ours != theirs] == read
    mine, others = encoded(CHARACTERS, ours), encoded(CHARACTERS, theirs)
    differ = {c for c in CHARACTERS if mine.get(c) != others.get(c)}
    # Of the two codes of such a character Windows writes IBM's, Python NEC's.
    nec = {c for c in differ if b"\xed\x40" <= others.get(c, b"") <= b"\xee\xfc" and mine[c] >= b"\xfa\x40"}
    assert (len(nec), differ - nec) == (373 if ours == "jkc-cp932" else 0, set(written))


@pytest.mark.parametrize("codec", [ours for ours, _ in CODECS if "utf" not in ours])
def test_what_is_encoded_is_read_back(codec):
    codes = encoded(CHARACTERS, codec)
    back = dict(zip(codes, decoded(list(codes.values()), codec)))
    # But for those that share a code.
    assert {c for c in back if c != back[c]} <= set("¥‾‖−〜－¢£¬￠￡￢￤—")


@pytest.mark.parametrize(
    ("codec", "order"), [("jkc-utf-8", "utf-8"), ("jkc-utf-16-le", "utf-16-le"), ("jkc-utf-16be-bom", "utf-16-be")]
)
def test_byte_order_marks(codec, order):
    mark = "\ufeff".encode(order)
    written = mark if "bom" in codec else b""
    text = "\ufeffa\ufeff"
    assert text.encode(codec) == written + text.encode(order)
    assert (mark + text.encode(order)).decode(codec) == text
    decoder = codecs.getincrementaldecoder(codec)()
    assert [decoder.decode(piece) for piece in (b"", mark[:1], mark[1:], mark)] == ["", "", "", "\ufeff"]
    encoder = codecs.getincrementalencoder(codec)()
    assert [encoder.encode(piece) for piece in ("", "a", "\ufeff")] == [written, "a".encode(order), mark]
    encoder.setstate(0)
    assert encoder.encode("a") == "a".encode(order)


def test_files_grow_without_another_mark(tmp_path):
    path = tmp_path / "text"
    for word in ("日本", "語"):
        with open(path, "a", encoding="jkc-utf-8-sig") as file:
            file.write(word)
    assert path.read_bytes() == "日本語".encode("utf-8-sig")


@pytest.mark.parametrize(
    ("name", "codec"),
    [
        ("eucJP-ms", "eucjp-ms"),
        ("EUCJP_MS", "eucjp-ms"),
        ("eucJP-win", "eucjp-ms"),
        ("Windows-51932", "cp51932"),
        ("ISO-2022-JP-MS", "cp50221"),
        ("jkc_Windows-31J", "jkc-cp932"),
        ("jkc-iso-2022-jp", "jkc-cp50221"),
        ("jkc-utf-16", "jkc-utf-16"),
        # Python's own stay as they are.
        ("Shift_JIS", "shift_jis"),
        ("ms932", "cp932"),
        ("iso-2022-jp", "iso2022_jp"),
        ("jkc-ascii", None),
        ("jkc-", None),
        ("sjis-win", None),
    ],
)
def test_names(name, codec):
    if codec is None:
        with pytest.raises(LookupError):
            codecs.lookup(name)
    else:
        assert codecs.lookup(name).name == codec


def test_pandas_reads_and_writes_tables(tmp_path):
    pandas = pytest.importorskip("pandas")
    path = tmp_path / "table.csv"
    path.write_bytes("品名,数\n①髙橋,1\n～,2\n".encode("eucjp-ms"))
    for engine in ("c", "python"):
        table = pandas.read_csv(path, encoding="eucjp-ms", engine=engine)
        assert list(table["品名"]) == ["①髙橋", "～"]
    table.to_csv(path, encoding="cp50221", index=False)
    assert pandas.read_csv(path, encoding="cp50221").equals(table)


def test_threads_share_a_codec():
    data = TEXT.encode("eucjp-ms") * 50
    with ThreadPoolExecutor(4) as pool:
        assert set(pool.map(lambda _: data.decode("eucjp-ms").encode("eucjp-ms"), range(800))) == {data}
