"""Names of encodings."""
import pytest

from jkc import encodings
from jkc._native import lib


@pytest.mark.parametrize(
    ("name", "code_type"),
    [
        ("Shift_JIS", lib.JKC_TYPE_SJIS),
        ("windows-31j", lib.JKC_TYPE_SJIS),
        ("jkc-cp932", lib.JKC_TYPE_SJIS),
        ("EUC-JP", lib.JKC_TYPE_EUC),
        ("eucJP_ms", lib.JKC_TYPE_EUC_MS),
        ("iso-2022-jp", lib.JKC_TYPE_JIS),
        ("utf8", lib.JKC_TYPE_UTF8),
        ("utf_16", lib.JKC_TYPE_UTF16LE_BOM),
    ],
)
def test_names_that_people_use(name: str, code_type: int) -> None:
    assert encodings.lookup(name).code_type == code_type
