"""The encodings: the library's code types beside the names that Python, IANA and people have for them."""
from __future__ import annotations

from typing import NamedTuple, Optional

from ._native import lib


class Encoding(NamedTuple):
    """One encoding."""

    code_type: int
    """The number that the C library has for it (JkcCodeType)."""
    python: str
    """The name of a codec of Python that reads it; those that Python lacks come with this package."""
    iana: str
    """The name that belongs into a header of a mail or a page; of variants of EUC-JP, that of EUC-JP."""
    aliases: tuple[str, ...]
    """Other names by which it is found; case, hyphens, underscores and spaces do not matter."""

    @property
    def bom(self) -> bool:
        """Whether texts in it begin with a byte-order mark."""
        return self.code_type in (lib.JKC_TYPE_UTF16BE_BOM, lib.JKC_TYPE_UTF16LE_BOM, lib.JKC_TYPE_UTF8_BOM)

    @property
    def is_unicode(self) -> bool:
        """Whether it is a form of Unicode."""
        return bool(self.code_type >= lib.JKC_TYPE_UTF16BE)


def _row(code_type: int, python: str, iana: str, aliases: str = "") -> Encoding:
    return Encoding(code_type, python, iana, tuple(aliases.split()))


ENCODINGS: tuple[Encoding, ...] = (
    _row(lib.JKC_TYPE_ASCII, "ascii", "US-ASCII", "ISO646-US ANSI_X3.4-1968 CP20127"),
    _row(lib.JKC_TYPE_JIS, "cp50221", "ISO-2022-JP", "JIS ISO-2022-JP-MS csISO2022JP x-windows-50221"),
    _row(lib.JKC_TYPE_JIS2004, "iso2022_jp_2004", "ISO-2022-JP-2004", "JIS2004 ISO-2022-JP-3"),
    _row(lib.JKC_TYPE_SJIS, "cp932", "Shift_JIS",
         "Windows-31J Windows-932 sjis sjis-win MS932 MS_Kanji x-sjis csShiftJIS csWindows31J"),
    _row(lib.JKC_TYPE_EUC, "euc_jp", "EUC-JP", "EUC ujis x-euc-jp csEUCPkdFmtJapanese"),
    _row(lib.JKC_TYPE_EUC_20932, "cp20932", "EUC-JP", "Windows-20932"),
    _row(lib.JKC_TYPE_EUC_51932, "cp51932", "EUC-JP", "Windows-51932"),
    _row(lib.JKC_TYPE_EUC_MS, "eucjp-ms", "EUC-JP", "EUC-MS eucJP-win eucJP-open"),
    _row(lib.JKC_TYPE_UTF16BE, "utf-16-be", "UTF-16BE", "UCS-2BE CP1201"),
    _row(lib.JKC_TYPE_UTF16BE_BOM, "utf-16", "UTF-16", "UTF-16BE-BOM UnicodeBig"),
    _row(lib.JKC_TYPE_UTF16LE, "utf-16-le", "UTF-16LE", "UCS-2LE CP1200"),
    _row(lib.JKC_TYPE_UTF16LE_BOM, "utf-16", "UTF-16", "UTF-16LE-BOM Unicode"),
    _row(lib.JKC_TYPE_UTF8, "utf-8", "UTF-8", "UTF-8N CP65001"),
    _row(lib.JKC_TYPE_UTF8_BOM, "utf-8-sig", "UTF-8", "UTF-8-BOM"),
)
"""Every encoding, by the number of its code type."""

BY_CODE_TYPE: dict[int, Encoding] = {encoding.code_type: encoding for encoding in ENCODINGS}
"""The same, to be looked up by that number."""


def plain(name: str) -> str:
    """A name in lower case, with nothing but letters and digits."""
    return "".join(c for c in name.lower() if c.isalnum())


def _names() -> dict[str, Encoding]:
    names: dict[str, Encoding] = {}
    # A name that several have is that of the first, but for UTF-16, which is written little-endian.
    names[plain("UTF-16")] = BY_CODE_TYPE[lib.JKC_TYPE_UTF16LE_BOM]
    for column in (1, 2, 3):
        for encoding in ENCODINGS:
            value = encoding[column]
            for name in value if isinstance(value, tuple) else (str(value),):
                names.setdefault(plain(name), encoding)
    return names


_BY_NAME = _names()


def find(name: str) -> Optional[Encoding]:
    """The encoding of a name, with or without "jkc-" in front of it; None where there is none."""
    word = plain(name)
    return _BY_NAME.get(word) or _BY_NAME.get(word[3:] if word.startswith("jkc") else word)


def lookup(name: str) -> Encoding:
    """The encoding of a name. Raises LookupError where there is none."""
    encoding = find(name)
    if encoding is None:
        raise LookupError(f"unknown encoding: {name}")
    return encoding
