#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# The cost of a block on Windows, under Wine, against Linux on the same machine:
#   compare-windows.py [--rounds N] LINUX-BUILD WINDOWS-BUILD
# The two take turns, and the median of the rounds counts. Times are the processor's. Prints the table of
# docs/performance.md and fails where the median of the ratios lies above 1.15.
import argparse
import json
import pathlib
import re
import resource
import statistics
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/windows"))
from both_platforms import DEMO, BothPlatforms  # noqa: E402

LIMIT = 1.15
RATE, BLOCK = 48000, 256
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6}
# Under Wine the processor's time comes in steps of 10 ms.
LENGTH = "--benchmark_min_time=0.25"
BENCHMARKS = r"playBlocks.*/256$|/middle$|^EQ/(bands|filters|all)$|kind [0-9]+$"
PRESETS = ("01 Keys and Splits/Clav and Sub", "02 Velocity Layers/Choir and Brass", "03 Drums and Grooves/Dub Station",
           "04 Pads and Atmospheres/Frozen Choir", "05 Leads and Basses/Rubber Limited", "06 Motion and Rhythm/Swing Machine")


def benchmarked(platform, build):
    """Nanoseconds by name."""
    program = build / "benchmarks" / ("quorel_bench" + platform.ending)
    text = platform.run(program, f"--benchmark_filter={BENCHMARKS}", LENGTH, "--benchmark_format=json")
    results = json.loads(text[text.index("{"):])["benchmarks"]
    failed = [r["name"] for r in results if r.get("error_occurred")]
    if failed or not results:
        sys.exit(f"{platform.name}: no result of {failed}")
    return {r["name"]: r["cpu_time"] * NANOSECONDS[r["time_unit"]] for r in results}


def rendered(platform, scratch):
    """Nanoseconds for a block of 256 samples by the name of a preset: what a slower song takes longer than a quick one."""
    times = {}
    for preset in PRESETS:
        file = platform.prefix / "data/Ostrand/Quorel/Banks" / (preset + ".qrl")
        seconds, processor = [], []
        for tempo in ("60", "240"):
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            text = platform.render("--preset", file, DEMO / "quorel-demo.mid", "--tempo", tempo, "--block", "256", "--rate",
                                   str(RATE), "--tail", "0", "-o", scratch / "out.wav")
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            seconds.append(float(re.search(r"length ([0-9.]+) s", text)[1]))
            processor.append(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
        times[preset.split("/")[1]] = (processor[0] - processor[1]) / (seconds[0] - seconds[1]) * BLOCK / RATE * 1e9
    return times


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("linux", type=pathlib.Path)
    parser.add_argument("windows", type=pathlib.Path)
    options = parser.parse_args()
    rounds = {}
    with BothPlatforms(options.linux / "dist", options.windows / "dist") as both:
        for _ in range(options.rounds):
            for platform, build in ((both.linux, options.linux), (both.windows, options.windows)):
                times = {**rendered(platform, both.scratch), **benchmarked(platform, build.resolve())}
                for name, time in times.items():
                    rounds.setdefault(name, {}).setdefault(platform.name, []).append(time)
    medians = {name: {p: statistics.median(times) for p, times in of.items()} for name, of in rounds.items()}
    ratios = {name: of["Windows"] / of["Linux"] for name, of in medians.items()}
    print("| a block of | Linux, µs | Windows, µs | ratio |\n|---|--:|--:|--:|")
    for name, ratio in ratios.items():
        print(f"| {name} | {medians[name]['Linux'] / 1000:.2f} | {medians[name]['Windows'] / 1000:.2f} | {ratio:.2f} |")
    median = statistics.median(ratios.values())
    print(f"\nMedian {median:.2f}, largest {max(ratios.values()):.2f}")
    sys.exit(0 if median <= LIMIT else 1)


if __name__ == "__main__":
    main()
