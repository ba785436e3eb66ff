"""The program jkc that comes with the package."""
import os
import shutil
import sys
from pathlib import Path


def program() -> str:
    """Returns the path of the program ``jkc``: what JKC_PROGRAM names, the one in the package, or one on the PATH.

    Raises FileNotFoundError where there is none.
    """
    packaged = Path(__file__).parent / "bin" / "jkc"
    found = os.environ.get("JKC_PROGRAM") or (str(packaged) if packaged.exists() else shutil.which("jkc"))
    if not found:
        raise FileNotFoundError("the program jkc is neither in the package nor on the PATH")
    return found


def main() -> None:
    """Becomes the program: what the command ``jkc`` that comes with the package does."""
    os.execv(program(), ["jkc", *sys.argv[1:]])
