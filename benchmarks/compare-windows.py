#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# The cost of a block on Windows, under Wine, against Linux on the same machine:
#   compare-windows.py [--rounds N] LINUX-BUILD WINDOWS-BUILD
# The two take turns, and the least time of all rounds counts, so that other work on the machine matters little. Prints the
# table of docs/performance.md and fails where the median of the ratios lies above 1.15.
import argparse
import json
import pathlib
import re
import statistics
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/windows"))
from both_platforms import DEMO, BothPlatforms  # noqa: E402

LIMIT = 1.15
SHORT = "--benchmark_min_time=0.02"
BENCHMARKS = r"playBlocks.*/256$|/middle$|^EQ/(bands|filters|all)$|kind [0-9]+$"
PRESETS = ("01 Keys and Splits/Clav and Sub", "02 Velocity Layers/Choir and Brass", "03 Drums and Grooves/Dub Station",
           "04 Pads and Atmospheres/Frozen Choir", "05 Leads and Basses/Rubber Limited", "06 Motion and Rhythm/Swing Machine")


def benchmarked(platform, build):
    """Nanoseconds by name."""
    program = build / "benchmarks" / ("quorel_bench" + platform.ending)
    text = platform.run(program, f"--benchmark_filter={BENCHMARKS}", SHORT, "--benchmark_format=json")
    results = json.loads(text[text.index("{"):])["benchmarks"]
    failed = [r["name"] for r in results if r.get("error_occurred")]
    if failed or not results:
        sys.exit(f"{platform.name}: no result of {failed}")
    return {r["name"]: r["real_time"] for r in results}


def rendered(platform, scratch):
    """Nanoseconds for a block of 256 samples by the name of a preset."""
    times = {}
    for preset in PRESETS:
        text = platform.render("--preset", preset, "--block", "256", "--rate", "48000", DEMO / "quorel-demo.mid", "-o",
                               scratch / "out.wav")
        speed = float(re.search(r"([0-9.]+) times real time", text)[1])
        times[preset.split("/")[1]] = 256.0 / 48000.0 * 1e9 / speed
    return times


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("linux", type=pathlib.Path)
    parser.add_argument("windows", type=pathlib.Path)
    options = parser.parse_args()
    least = {}
    with BothPlatforms(options.linux / "dist", options.windows / "dist") as both:
        for _ in range(options.rounds):
            for platform, build in ((both.linux, options.linux), (both.windows, options.windows)):
                times = {**rendered(platform, both.scratch), **benchmarked(platform, build.resolve())}
                for name, time in times.items():
                    mine = least.setdefault(name, {})
                    mine[platform.name] = min(time, mine.get(platform.name, time))
    ratios = {name: times["Windows"] / times["Linux"] for name, times in least.items()}
    print("| a block of | Linux, µs | Windows, µs | ratio |\n|---|--:|--:|--:|")
    for name, ratio in ratios.items():
        print(f"| {name} | {least[name]['Linux'] / 1000:.2f} | {least[name]['Windows'] / 1000:.2f} | {ratio:.2f} |")
    median = statistics.median(ratios.values())
    print(f"\nMedian {median:.2f}, largest {max(ratios.values()):.2f}")
    sys.exit(0 if median <= LIMIT else 1)


if __name__ == "__main__":
    main()
