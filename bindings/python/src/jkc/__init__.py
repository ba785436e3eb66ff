"""Tells which Japanese encoding a text is in, and converts it."""
from ._program import program

__all__ = ["program"]
