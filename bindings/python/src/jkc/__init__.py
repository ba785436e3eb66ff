"""Tells which Japanese encoding a text is in, and converts it.

>>> import jkc
>>> data = "日本語".encode("cp932")
>>> jkc.detect(data).encoding
'cp932'
>>> jkc.decode(data)
'日本語'
>>> jkc.convert(data, "euc-jp")
b'\\xc6\\xfc\\xcb\\xdc\\xb8\\xec'
"""
from . import codecs  # registers them
from ._convert import ConversionError, Converted, convert, decode, encode
from ._detect import Detection, DetectionError, Detector, Evidence, detect
from ._losses import Loss
from ._mojibake import Mending, Misreading, unmojibake
from ._native import lib as _lib
from ._open import open
from ._program import program

__version__ = ".".join(str(_lib.jkc_version_number() // unit % 100) for unit in (10000, 100, 1))

__all__ = [
    "ConversionError",
    "Converted",
    "Detection",
    "DetectionError",
    "Detector",
    "Evidence",
    "Loss",
    "Mending",
    "Misreading",
    "codecs",
    "convert",
    "decode",
    "detect",
    "encode",
    "open",
    "program",
    "unmojibake",
]
