"""Mojibake. That it is mended rightly, the tests of the library see to."""
import jkc


def test_ways_back() -> None:
    text = "日本語の文章です。"
    broken = text.encode("cp932").decode("latin-1")
    mending = jkc.unmojibake(broken)
    assert mending is not None and (mending.text, mending.lost) == (text, 0) and 0.5 < mending.confidence <= 1
    assert mending.steps == (jkc.Misreading(was="Shift_JIS", read_as="ISO-8859-1"),)
    assert jkc.unmojibake(text) is jkc.unmojibake("") is jkc.unmojibake("a\ud800") is None


def test_what_did_not_come_back() -> None:
    mending = jkc.unmojibake("譌･譛ｬ隱槭�繝��繧ｹ繝医〒縺吶�")
    assert mending is not None and mending.lost == mending.text.count("\ufffd") > 0
