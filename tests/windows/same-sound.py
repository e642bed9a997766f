#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# Renders the same on Linux and on Windows and compares sample by sample:
#   same-sound.py [--short] LINUX-DIST WINDOWS-DIST
# Prints a table and fails where the largest difference lies above -120 dBFS. With --short it takes a few, and the demo.
import argparse
import array
import concurrent.futures
import math
import pathlib
import struct
import sys

sys.dont_write_bytecode = True
from both_platforms import DEMO, BothPlatforms, Failure  # noqa: E402

LIMIT = -120.0
INSTRUMENTS = ("Orlen Tarn Tarn2 Hexley Hexley2 Hexley-Mini Dorvik Dorvik-K Zeph Imre Glasson Glasson2 Tarn-Mini "
               "Fenn2").split()
NUM_EFFECTS = 33
FILTER, NUM_FILTERS = 29, 29
DISTORTION, NUM_DISTORTIONS = 17, 12
# An effect's ten values: all in the middle of things, then further out, with much feedback and modulation.
VALUES = ("0.41,0.62,0.48,0.3,0.55,0.44,0.66,0.35,0.52,0.47", "0.83,0.27,0.9,0.71,0.86,0.93,0.18,0.78,0.64,0.8")


def song():
    """Four seconds at 120 a minute: drums, chords up the keyboard, and the bender and the modulation wheel."""
    events = []
    for step in range(16):
        at = step * 240  # in 480ths of a quarter note
        keys = [24 + step % 8] + ([36 + 5 * (step // 2), 43 + 5 * (step // 2), 52 + 4 * (step // 2)] if step % 2 == 0 else [])
        for key in keys:
            events += [(at, bytes([0x90, key, 40 + 5 * step])), (at + 220 + 260 * (step % 4 == 0), bytes([0x80, key, 0]))]
        events += [(at + 120, bytes([0xB0, 1, 8 * step])), (at + 180, bytes([0xE0, 0, 64 + 3 * (step % 5)]))]
    track, now = b"", 0
    for at, event in sorted(events, key=lambda e: e[0]):
        delta, now = at - now, at
        track += (bytes([0x80 | delta >> 7]) if delta > 127 else b"") + bytes([delta & 127]) + event
    track += b"\0\xff\x2f\0"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480) + b"MTrk" + struct.pack(">I", len(track)) + track


def renders(midi, sound, presets):
    """(group, name, arguments) of all renders."""
    for number in range(1, NUM_EFFECTS):
        for setting, values in enumerate(VALUES):
            # Rates and lengths of blocks change from one to the next.
            rate, block = (("44100", "512"), ("96000", "64"), ("48000", "1000"))[(number + setting) % 3]
            yield "effects", f"effect {number}, {'middle' if setting == 0 else 'far out'}", (
                f"--fx=1={number}:{values}:mix=1", "--input", sound, "--rate", rate, "--block", block)
    for kind in range(NUM_FILTERS):
        yield "filters", f"filter {kind}", (
            f"--fx=1={FILTER}:{kind / 28.99:.4f},0.3,0.55,0.8,0.4,0.3,0.6,0.5,0,0:mix=1", "--input", sound)
    for kind in range(NUM_DISTORTIONS):
        yield "distortions", f"distortion {kind}", (
            f"--fx=1={DISTORTION}:{kind / 11.99:.4f},0.6,0.7,0.4,0,1,0,0.5:mix=1", "--input", sound)
    for instrument in INSTRUMENTS:
        for first in (1, 2):
            layers = [f"--layer={n + 1}={instrument}:{first + 2 * n}" for n in range(4)]
            yield "instruments", f"{instrument}, programs {first} to {first + 6}", (*layers, midi)
    for name, parts in (("bands", ["1", "4", "8"]), ("filters", ["LP", "HP"])):
        for layers in (1, 2, 4):
            words = [f"--layer={n}={INSTRUMENTS[3 * n]}" for n in range(1, layers + 1)]
            for n in range(1, layers + 1):
                words += [f"--param=Layer{n} EQ On / Off=1"]
                if name == "bands":
                    for band in (1, 2, 3):
                        words += [f"--param=Layer{n} EQ Band {band} {what}" for what in
                                  ("On / Off=1", f"Freq={0.2 * band + 0.05 * n:.2f}", "BW=0.6", f"Gain={0.9 - 0.15 * n:.2f}")]
                else:
                    words += [f"--param=Layer{n} EQ {kind} Filter {what}" for kind, at in (("LP", 0.8), ("HP", 0.2))
                              for what in ("On / Off=1", f"Freq={at - 0.03 * n:.2f}")]
            yield "EQ", f"{name} on {layers}", (*words, midi)
    # As files, which load at once: a change of presets takes its time, and free-running modulation runs on meanwhile.
    for preset in presets:
        yield "factory presets", preset.stem, ("--preset", preset, midi)
    yield "demo", "demo song", ("@" + str(DEMO / "demo-render.args"), DEMO / "quorel-demo.mid")
    yield "tour", "tour of the factory presets", ("tour",)


def samples(file):
    """All samples of a WAV of 32-bit floats or of 24 bits, and what full scale is in them."""
    data = file.read_bytes()
    at = 12
    while data[at:at + 4] != b"data":
        if data[at:at + 4] == b"fmt ":
            bits = struct.unpack_from("<H", data, at + 22)[0]
        at += 8 + struct.unpack_from("<I", data, at + 4)[0]
    sound = data[at + 8:at + 8 + struct.unpack_from("<I", data, at + 4)[0]]
    if bits == 32:
        return array.array("f", sound), 1.0
    words = bytearray(len(sound) // 3 * 4)
    for byte in range(3):
        words[byte + 1::4] = sound[byte::3]
    return array.array("i", bytes(words)), 2.0**31


def decibels(level):
    return 20.0 * math.log10(level) if level > 0.0 else -math.inf


def shown(level):
    return "the same bits" if level == -math.inf else f"{level:.1f} dBFS"


def play(platform, arguments, output):
    if arguments[0] == "tour":
        # Its tool isn't one of the products.
        tool = platform.dist.parent / "tools/tour" / ("quorel-tour" + platform.ending)
        platform.run(tool, "--prefix", platform.prefix, "-o", output, DEMO / "tour.txt")
        return
    words = ["@" + platform.path(pathlib.Path(a[1:])) if str(a).startswith("@") else a for a in arguments]
    platform.render(*words, "--bits", "32", "-o", output)


def compare(both, number, arguments):
    """Peak and largest difference in dBFS; a render that fails is infinitely far off."""
    try:
        return difference(both, number, arguments)
    except Failure as failure:
        print(failure, flush=True)
        return 0.0, math.inf


def difference(both, number, arguments):
    sounds = []
    for platform in (both.linux, both.windows):
        output = platform.place(number) / "out.wav"
        play(platform, arguments, output)
        sounds.append(samples(output))
        output.unlink()
    (a, full_scale), (b, _) = sounds
    peak = decibels(max(map(abs, a)) / full_scale)
    if a == b:
        return peak, -math.inf
    if len(a) != len(b):
        return peak, math.inf
    return peak, decibels(max(abs(x - y) for x, y in zip(a, b)) / full_scale)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--short", action="store_true")
    parser.add_argument("linux")
    parser.add_argument("windows")
    options = parser.parse_args()
    worst = {}
    with BothPlatforms(options.linux, options.windows) as both:
        midi, sound = both.scratch / "song.mid", both.scratch / "song.wav"
        midi.write_bytes(song())
        both.linux.render("--layer=1=Dorvik", "--layer=2=Tarn", "--layer=3=Hexley", "--bits=32", "--rate=44100", "--tail=0",
                          midi, "-o", sound)
        banks = both.linux.prefix / "data/Ostrand/Quorel/Banks"
        presets = sorted(banks.glob("[0-8]*/*.qrl"))
        jobs = list(renders(midi, sound, presets))
        if options.short:
            jobs = jobs[:-2:10] + jobs[-2:-1]
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            results = pool.map(lambda j: compare(both, j[0], j[1][2]), enumerate(jobs))
            for (group, name, _), (peak, difference) in zip(jobs, results):
                print(f"{name:40} peak {peak:6.1f} dBFS  {shown(difference)}", flush=True)
                worst.setdefault(group, []).append((difference, peak))
    print("\n| group | renders | the same bits | largest difference |\n|---|--:|--:|--:|")
    for group, all_of in worst.items():
        same = sum(d == -math.inf for d, _ in all_of)
        print(f"| {group} | {len(all_of)} | {same} | {shown(max(all_of)[0])} |")
    silent = sum(peak < -100.0 for all_of in worst.values() for _, peak in all_of)
    over = sum(d > LIMIT for all_of in worst.values() for d, _ in all_of)
    if silent or over:
        sys.exit(f"same-sound: {over} renders differ by more than {LIMIT:.0f} dBFS, {silent} are silent")


if __name__ == "__main__":
    main()
