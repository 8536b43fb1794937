"""Builds the native part of the Python package with CMake. All else is in pyproject.toml."""

import os
import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).parent.resolve()


def version() -> str:
    """The one version of the project."""
    match = re.search(r"project\(quillmark VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())
    assert match is not None
    return match.group(1)


class BuildWithCMake(build_ext):
    """Puts the module, and what it opens by itself, where setuptools collects the package."""

    def run(self) -> None:
        target = ROOT / "python" if self.editable_mode else Path(self.build_lib).resolve()
        # A tree that is configured already, with QUILLMARK_BUILD_PYTHON=ON, saves compiling again.
        configured = os.environ.get("QUILLMARK_BUILD_DIRECTORY")
        build = Path(configured or self.build_temp).resolve()
        if configured is None:
            subprocess.run(self.configuration(build), check=True)
        subprocess.run(["cmake", "--build", str(build), "--target", "quillmark_python"], check=True)
        install = ["cmake", "--install", str(build), "--component", "python", "--strip"]
        subprocess.run([*install, "--prefix", str(target)], check=True)

    def configuration(self, build: Path) -> list[str]:
        """The command that configures a tree for the Python that runs."""
        values = {
            "CMAKE_BUILD_TYPE": "Release",
            "QUILLMARK_BUILD_PYTHON": "ON",
            "QUILLMARK_BUILD_TESTS": "OFF",
            "Python_EXECUTABLE": sys.executable,
        }
        command = ["cmake", "-S", str(ROOT), "-B", str(build), "-G", "Ninja"]
        return command + [f"-D{name}={value}" for name, value in values.items()]


setup(
    version=version(),
    ext_modules=[Extension("quillmark._quillmark", sources=[])],
    cmdclass={"build_ext": BuildWithCMake},
)
