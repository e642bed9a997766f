# SPDX-License-Identifier: GPL-3.0-or-later
# The products for Linux and for Windows side by side, each with a user of its own below a scratch folder; those for
# Windows run under Wine.
import os
import pathlib
import shutil
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
DEMO = HERE.parent.parent / "demo"
TIME_LIMIT = 300


class Failure(Exception):
    """A program that has failed, with what it said."""


class Platform:
    """`dist` is the folder of a build's products, `prefix` where its user is set up."""

    def __init__(self, name, dist, prefix):
        self.name, self.dist, self.prefix = name, pathlib.Path(dist).resolve(), prefix
        self.is_windows = (self.dist / "quorel-render.exe").exists()
        self.ending = ".exe" if self.is_windows else ""
        self.environment = dict(os.environ)
        if self.is_windows:
            home = prefix.parent / "home"
            home.mkdir(exist_ok=True)  # a new Wine prefix links its Documents there
            self.environment.update(LC_ALL="C.UTF-8", HOME=str(home), WINEPREFIX=str(prefix.parent / "wine"), WINEDEBUG="-all",
                                    WINEDLLOVERRIDES="winedbg.exe=d;mscoree=;mshtml=")
            self.call(["wine", "reg", "add", r"HKCU\Software\Wine\Drivers", "/v", "Graphics", "/d", "null", "/f"])
        self.run("quorel-setup", "--prefix", prefix)

    def path(self, file):
        """A path as this platform writes it."""
        return "Z:" + str(file).replace("/", "\\") if self.is_windows else str(file)

    def run(self, tool, *arguments):
        """A product, or a program by its path. Paths among the arguments are given as `pathlib.Path`."""
        program = tool if isinstance(tool, pathlib.Path) else self.dist / (tool + self.ending)
        words = [self.path(a) if isinstance(a, pathlib.Path) else a for a in arguments]
        return self.call((["wine"] if self.is_windows else []) + [str(program)] + words)

    def call(self, command):
        # Into files: Wine's services, which the first program starts, would hold a pipe open beyond its end.
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                                  timeout=TIME_LIMIT)
            output.seek(0)
            errors.seek(0)
            text = output.read().decode(errors="replace")
            if done.returncode != 0:
                said = text + errors.read().decode(errors="replace")
                raise Failure(f"{self.name}: exit code {done.returncode}: {' '.join(command)}\n{said}")
        return text

    def render(self, *arguments):
        return self.run("quorel-render", "--prefix", self.prefix, *arguments)

    def place(self, name):
        """A new folder. No two programs write into one at a time: neither platform sees that the other has a file in use,
        and both clear away what seems to be left behind."""
        folder = self.prefix.parent / f"{self.name}-{name}"
        folder.mkdir()
        return folder

    def close(self):
        if self.is_windows:
            subprocess.run(["wineserver", "-k"], env=self.environment)


class BothPlatforms:
    """A scratch folder, and both platforms in it while a `with` block runs."""

    def __init__(self, linux, windows):
        self.dists = linux, windows

    def __enter__(self):
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="quorel-both-"))
        self.linux = Platform("Linux", self.dists[0], self.scratch / "linux")
        self.windows = Platform("Windows", self.dists[1], self.scratch / "windows")
        return self

    def __exit__(self, *_):
        self.windows.close()
        shutil.rmtree(self.scratch, ignore_errors=True)
