"""Error handlers of the codecs: what they are told, and what becomes of their answers."""
import codecs
import io
import random
import time

import pytest

import jkc  # noqa: F401: registers the codecs

# Bytes, where the first loss stands, and what the handlers make of them.
DECODING = [
    ("jkc-cp932", b"a\x85\x40b", (1, 3, "code without a character"), "a\ufffdb", r"a\x85\x40b", "a\udc85@b"),
    ("jkc-cp932", b"\x82\xa0\x81\x20", (2, 3, "illegal multibyte sequence"), "あ\ufffd ", r"あ\x81 ", "あ\udc81 "),
    ("jkc-cp932", b"ab\x81", (2, 3, "incomplete multibyte sequence"), "ab\ufffd", r"ab\x81", "ab\udc81"),
    ("jkc-cp932", b"\xa0\xfd\x80", (0, 1, "illegal multibyte sequence"), "\ufffd" * 3, r"\xa0\xfd\x80",
     "\udca0\udcfd\udc80"),
    ("eucjp-ms", b"\x8f\xa1\x41\xa4\xa2", (0, 2, "illegal multibyte sequence"), "\ufffdAあ", r"\x8f\xa1Aあ",
     "\udc8f\udca1Aあ"),
    ("cp20932", b"\xad\xa1\xa4\xa2", (0, 2, "code without a character"), "\ufffdあ", r"\xad\xa1あ", "\udcad\udca1あ"),
    # Behind a loss, the designation and SO are still in force.
    ("cp50221", b'\x1b$B$"\xff$$\x1b(B.', (5, 6, "illegal multibyte sequence"), "あ\ufffdい.", r"あ\xffい.", "あ\udcffい."),
    ("cp50221", b"\x0e1\xff2\x0f3", (2, 3, "illegal multibyte sequence"), "ｱ\ufffdｲ3", r"ｱ\xffｲ3", "ｱ\udcffｲ3"),
    ("cp50221", b"\x1b(I1\xff\x1b(B1", (4, 5, "illegal multibyte sequence"), "ｱ\ufffd1", r"ｱ\xff1", "ｱ\udcff1"),
    ("cp50221", b"\x1b(X", (0, 2, "illegal multibyte sequence"), "\ufffdX", r"\x1b\x28X", None),
    ("cp50221", b"\x1b$B$", (3, 4, "incomplete multibyte sequence"), "\ufffd", r"\x24", None),
    ("jkc-iso-2022-jp-2004", b"\x1b$(P!!\xff!%", (6, 7, "illegal multibyte sequence"), "𠂉\ufffd丩", r"𠂉\xff丩", "𠂉\udcff丩"),
    ("jkc-utf-8", b"\xef\xbb\xbfa\xe3\x81\xef\xbb\xbf", (4, 6, "illegal multibyte sequence"), "a\ufffd\ufeff",
     "a\\xe3\\x81\ufeff", "a\udce3\udc81\ufeff"),
    ("jkc-utf-16-le", b"a\0\0\xdcb\0c", (2, 4, "illegal multibyte sequence"), "a\ufffdb\ufffd", r"a\x00\xdcb\x63", None),
]


@pytest.mark.parametrize(("codec", "data", "loss", "replaced", "escaped", "kept"), DECODING)
def test_bytes_are_lost(codec, data, loss, replaced, escaped, kept):
    with pytest.raises(UnicodeDecodeError) as caught:
        data.decode(codec)
    error = caught.value
    assert (error.start, error.end, error.reason) == loss
    assert (error.object, error.encoding) == (data, codecs.lookup(codec).name)
    assert data.decode(codec, "replace") == replaced
    assert data.decode(codec, "ignore") == replaced.replace("\ufffd", "")
    assert data.decode(codec, "backslashreplace") == escaped
    if kept is None:
        with pytest.raises(UnicodeDecodeError):
            data.decode(codec, "surrogateescape")
    else:
        assert data.decode(codec, "surrogateescape") == kept
        if not data.startswith((b"\x0e", b"\xef")):
            closing = b"" if codec != "jkc-iso-2022-jp-2004" else b"\x1b(B"
            assert kept.encode(codec, "surrogateescape") == data + closing


# Text, the character that is lost first, why, and what the handlers make of it.
UNMAPPABLE = "illegal multibyte sequence"
SURROGATE = "surrogates not allowed"
ENCODING = [
    ("jkc-cp932", "あ€い", 1, UNMAPPABLE, b"\x82\xa0?\x82\xa2", b"\x82\xa0\\u20ac\x82\xa2", b"\x82\xa0&#8364;\x82\xa2"),
    ("jkc-cp932", "x\U0001f600あ\U0001f600", 1, UNMAPPABLE, b"x?\x82\xa0?", b"x\\U0001f600\x82\xa0\\U0001f600",
     b"x&#128512;\x82\xa0&#128512;"),
    ("jkc-cp932", "\U0001f600", 0, UNMAPPABLE, b"?", b"\\U0001f600", b"&#128512;"),
    ("jkc-cp932", "\ufeffa", 0, UNMAPPABLE, b"?a", b"\\ufeffa", b"&#65279;a"),
    ("jkc-cp932", "\x80", 0, UNMAPPABLE, b"?", b"\\x80", b"&#128;"),
    # Two surrogates are no character, as they are none in Python.
    ("jkc-utf-8", "a\ud842\udf9f", 1, SURROGATE, b"a??", b"a\\ud842\\udf9f", b"a&#55362;&#57247;"),
    ("jkc-iso-2022-jp-2004", "あ\ud842\udf9fい", 1, SURROGATE, b'\x1b$B$"\x1b(B??\x1b$B$$\x1b(B',
     b'\x1b$B$"\x1b(B\\ud842\\udf9f\x1b$B$$\x1b(B', b'\x1b$B$"\x1b(B&#55362;&#57247;\x1b$B$$\x1b(B'),
    ("cp50221", "あ\x1b", 1, UNMAPPABLE, b'\x1b$B$"\x1b(B?', b'\x1b$B$"\x1b(B\\x1b', b'\x1b$B$"\x1b(B&#27;'),
    ("jkc-utf-16", "\ud800", 0, SURROGATE, b"\xff\xfe?\0", b"\xff\xfe" + "\\ud800".encode("utf-16-le"),
     b"\xff\xfe" + "&#55296;".encode("utf-16-le")),
]


@pytest.mark.parametrize(("codec", "text", "start", "reason", "replaced", "escaped", "referred"), ENCODING)
def test_characters_are_lost(codec, text, start, reason, replaced, escaped, referred):
    with pytest.raises(UnicodeEncodeError) as caught:
        text.encode(codec)
    error = caught.value
    assert (error.start, error.end, error.reason) == (start, start + 1, reason)
    assert (error.object, error.encoding) == (text, codecs.lookup(codec).name)
    for errors, expected in (("replace", replaced), ("backslashreplace", escaped), ("xmlcharrefreplace", referred)):
        assert text.encode(codec, errors) == expected
        if codec != "jkc-utf-16":
            assert (f"{text}\n" * 150).encode(codec, errors) == (expected + b"\n") * 150
        for size in (1, 2, 3):
            encoder = codecs.getincrementalencoder(codec)(errors)
            pieces = [encoder.encode(text[at:at + size]) for at in range(0, len(text), size)]
            assert b"".join(pieces) + encoder.encode("", True) == expected
    without = "".join(c for c in text if not ("\ud800" <= c <= "\udfff" or c in "€\U0001f600\x80\x1b\ufeff"))
    assert text.encode(codec, "ignore") == without.encode(codec)


# What a handler answers, and what becomes of it: encoding and decoding with Python's own codec do the same.
ANSWERS = [
    lambda e: ("う", e.end),
    lambda e: ("", e.end),
    lambda e: ("う", e.end + 1),
    lambda e: ("x", -1),
    lambda e: ("xyz", len(e.object)),
    lambda e: ("<", e.start + 2),
    lambda e: ("x", len(e.object) + 1),
    lambda e: ("x", -len(e.object) - 1),
    lambda e: ("x", None),
    lambda e: ("x",),
    lambda e: (1, e.end),
    lambda e: "x",
]


@pytest.mark.parametrize("answer", ANSWERS)
@pytest.mark.parametrize("ours, theirs", [("jkc-cp932", "cp932"), ("cp50221", "iso2022_jp"), ("jkc-utf-8", "utf-8")])
def test_answers_of_handlers(answer, ours, theirs):
    told = []

    def handler(error):
        told.append((error.start, error.end, error.object))
        return answer(error)

    codecs.register_error("jkc-test", handler)

    def outcome(call, value, codec):
        del told[:]
        try:
            return call(value, codec, "jkc-test"), list(told)
        except (TypeError, IndexError) as error:
            return type(error), list(told)

    if ours != "jkc-utf-8":  # Python's takes ASCII text only
        text = "aあ€い😀う\ud800えお"
        assert outcome(codecs.encode, text, ours) == outcome(codecs.encode, text, theirs)
    data = b'ab\xfd\x1b$B$"\xff$$$&\x1b(Bcd' if ours == "cp50221" else b"abc\xe0 de\xe0\1ghi"
    assert outcome(codecs.decode, data, ours) == outcome(codecs.decode, data, theirs)


def test_bytes_of_a_handler_stand_as_they_are():
    codecs.register_error("jkc-test", lambda error: (b"\xff\x5c", error.end))
    assert "あ€い".encode("jkc-cp932", "jkc-test") == b"\x82\xa0\xff\x5c\x82\xa2"
    assert "あ€い".encode("cp50221", "jkc-test") == b'\x1b$B$"\xff\x5c$$\x1b(B'
    codecs.register_error("jkc-test", lambda error: ("€", error.end))
    with pytest.raises(UnicodeEncodeError):
        "あ€い".encode("jkc-cp932", "jkc-test")


def test_an_error_holds_no_buffer():
    data = bytearray(b"a" * 100_000 + b"\xff")
    with pytest.raises(UnicodeDecodeError) as caught:
        codecs.decode(data, "jkc-cp932")
    data.append(0)
    assert caught.value.start == 100_000


def test_an_error_leaves_an_incremental_decoder_as_it_was():
    decoder = codecs.getincrementaldecoder("eucjp-ms")()
    assert decoder.decode(b"a\x8f\xb0") == "a"
    before = decoder.getstate()
    with pytest.raises(UnicodeDecodeError) as caught:
        decoder.decode(b"x")
    assert (caught.value.object, caught.value.start, caught.value.end) == (b"\x8f\xb0x", 0, 2)
    assert decoder.getstate() == before == (b"\x8f\xb0", 0)
    assert decoder.decode(b"\xa1") == "丂"


GARBAGE = {
    "jkc-cp932": b"a\x81\x40\xa0\xff\x82\xb1\x85",
    "eucjp-ms": b"a\x8e\x8f\xa1\xb0\xf3\xff\xad",
    "cp50221": b"\x1b\x0e\x0f$(BI@DOPJ!\"1\xff\n",
    "jkc-iso-2022-jp-2004": b"\x1b\x1b\x1b$$((BIDOQP!\"1nt\xff\n",
    "jkc-utf-8": b"a\xe3\x81\x82\xf0\x9f\x98\x80\xed\xa0\xef\xbb\xbf\xff",
    "jkc-utf-16-le": b"a\0\xd8\xdc\xff\xfe",
}


@pytest.mark.parametrize("errors", ["replace", "ignore", "backslashreplace"])
@pytest.mark.parametrize("codec", GARBAGE)
def test_garbage_in_pieces_is_what_it_is_as_a_whole(codec, errors):
    source = random.Random(codec)
    for _ in range(60):
        data = bytes(source.choices(GARBAGE[codec], k=40))
        whole = data.decode(codec, errors)
        if codec in ("jkc-utf-8", "jkc-utf-16-le"):
            space = " ".encode(codec)
            assert (space + data).decode(codec, errors) == (space + data).decode(codec[4:], errors)
        for at in range(len(data) + 1):
            decoder = codecs.getincrementaldecoder(codec)(errors)
            first = decoder.decode(data[:at])
            other = codecs.getincrementaldecoder(codec)(errors)
            other.setstate(decoder.getstate())
            assert first + other.decode(data[at:], True) == whole, (data, at)
        reader = codecs.getreader(codec)(io.BytesIO(data), errors)
        assert "".join(iter(lambda: reader.read(3), "")) == whole


@pytest.mark.parametrize("codec", ["jkc-cp932", "cp50221"])
def test_garbage_takes_time_in_proportion(codec):
    data = random.Random(1).randbytes(1 << 15)
    text = "".join(map(chr, random.Random(1).choices(range(0xAC00, 0xE000), k=1 << 13))) + "\U0001f600" * (1 << 12)

    def seconds(count):
        begin = time.process_time()
        (data * count).decode(codec, "backslashreplace")
        (text * count).encode(codec, "xmlcharrefreplace")
        return time.process_time() - begin

    assert seconds(4) < 12 * max(seconds(1), 0.01)
