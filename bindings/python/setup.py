"""Builds the package: libjkc and the program jkc by CMake, unless JKC_BUILD names the folder of a build that is there."""
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import setup
from setuptools.command.build_ext import build_ext
from setuptools.command.sdist import sdist

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from native_build import INCLUDE, LIBRARY  # noqa: E402

# The folders of libjkc that the package is not made of.
OTHERS = {"bench", "jni", "tests"}


def version() -> str:
    header = (INCLUDE / "jkc.h").read_text(encoding="utf-8")
    return ".".join(re.search(rf"#define JKC_VERSION_{part} (\d+)", header)[1] for part in ("MAJOR", "MINOR", "PATCH"))


class BuildWithLibrary(build_ext):
    """Links libjkc.a into the extension module and puts the program beside it."""

    def run(self) -> None:
        build = os.environ.get("JKC_BUILD")
        folder = Path(build) if build else self.build_library()
        library = folder / "lib" / "libjkc.a"
        for extension in self.extensions:
            extension.extra_objects.append(str(library))
            extension.depends += [str(library), str(HERE / "native.c"), *map(str, INCLUDE.rglob("*.h"))]
            extension.extra_link_args.append("-Wl,--strip-debug")
        super().run()
        package = HERE / "src" / "jkc" if self.inplace else Path(self.build_lib) / "jkc"
        (package / "bin").mkdir(parents=True, exist_ok=True)
        shutil.copy2(folder / "bin" / "jkc", package / "bin" / "jkc")

    def build_library(self) -> Path:
        folder = (Path(self.build_temp) / "libjkc").resolve()
        options = ["BUILD_SHARED=OFF", "BUILD_CLI=ON", "BUILD_TESTS=OFF", "JNI=OFF", "INSTALL=OFF"]
        subprocess.run(["cmake", "-S", LIBRARY, "-B", folder, "-DCMAKE_BUILD_TYPE=Release",
                        "-DCMAKE_EXE_LINKER_FLAGS=-s", *(f"-DJKC_{option}" for option in options)], check=True)
        subprocess.run(["cmake", "--build", folder, "--parallel", str(os.cpu_count() or 1),
                        "--target", "jkc_static", "jkc_program"], check=True)
        return folder


class ArchiveWithLibrary(sdist):
    """Puts libjkc's sources into the source archive."""

    def make_release_tree(self, base_dir: str, files: list) -> None:
        super().make_release_tree(base_dir, files)
        folders = set(re.findall(r"add_subdirectory\((\w+)\)", (LIBRARY / "CMakeLists.txt").read_text(encoding="utf-8")))
        for name in ("CMakeLists.txt", "LICENSE", "cmake", "include", *sorted(folders - OTHERS)):
            source, copy = LIBRARY / name, Path(base_dir) / "libjkc" / name
            copy.parent.mkdir(exist_ok=True)
            if source.is_dir():
                shutil.copytree(source, copy)
            else:
                shutil.copy2(source, copy)


setup(
    version=version(),
    cffi_modules=["native_build.py:ffibuilder"],
    cmdclass={"build_ext": BuildWithLibrary, "sdist": ArchiveWithLibrary},
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
)
