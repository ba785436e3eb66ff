"""setuptools' backend, which also builds without a network what the interpreter at hand has all it needs for.

An installer that isolates builds hides the interpreter's own packages and fetches others. What is there serves as well: it
is found where it is, and only what is missing is asked for.
"""
import importlib.util
import site
import sys

sys.path += [folder for folder in site.getsitepackages() if folder not in sys.path]
MISSING = [name for name in ("setuptools", "wheel", "cffi") if importlib.util.find_spec(name) is None]

if "setuptools" not in MISSING:
    from setuptools.build_meta import *  # noqa: E402, F401, F403


def get_requires_for_build_wheel(config_settings=None):
    return MISSING


def get_requires_for_build_sdist(config_settings=None):
    return MISSING
