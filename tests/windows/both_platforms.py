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
        self.run("quorel-setup", "--prefix", prefix)

    def path(self, file):
        """A path as this platform writes it."""
        return "Z:" + str(file).replace("/", "\\") if self.is_windows else str(file)

    def run(self, tool, *arguments):
        """A product, or a program by its path. Paths among the arguments are given as `pathlib.Path`."""
        program = tool if isinstance(tool, pathlib.Path) else self.dist / (tool + self.ending)
        words = [self.path(a) if isinstance(a, pathlib.Path) else a for a in arguments]
        command = ([str(HERE / "run-in-wine.sh")] if self.is_windows else []) + [str(program)] + words
        # run-in-wine.sh ends a program that takes too long, and what it has started.
        environment = dict(os.environ, QUOREL_WINE_TIMEOUT=str(TIME_LIMIT))
        done = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=TIME_LIMIT + 60)
        text = done.stdout.decode(errors="replace")
        if done.returncode != 0:
            said = text + done.stderr.decode(errors="replace")
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
        shutil.rmtree(self.scratch, ignore_errors=True)
