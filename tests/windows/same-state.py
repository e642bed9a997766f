#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# What one platform saves the other loads and saves again, byte by byte the same: all factory presets, and a sound whose
# name, values and instruments' states come from elsewhere than the factory:
#   same-state.py [--short] LINUX-DIST WINDOWS-DIST
import argparse
import concurrent.futures
import sys

sys.dont_write_bytecode = True
from both_platforms import BothPlatforms  # noqa: E402

# A sound that no factory preset has, with numbers that no short decimal gives exactly.
OWN_SOUND = ("--layer=1=Tarn:3", "--layer=2=Glasson2:5", "--layer=3=Dorvik-K:2", "--layer=4=Fenn2:7",
             "--param=Layer1 Volume=1/3", "--param=Layer2 Pan=2/7", "--fx=1=HQ Reverb:0.1,0.7,0.33,0.9:mix=0.37",
             "--send=3:1=0.77pre")
# What a name may hold on both platforms.
OWN_NAME = "Été – Ночь 夜"


def saved(platform, preset, file):
    platform.render("--preset", preset, "--save-preset", file)
    return file.read_bytes()


def problems(both, number, preset):
    """What isn't the same about a preset file."""
    places = [platform.place(number) for platform in (both.linux, both.windows)]
    files = [places[0] / "1.qrl", places[1] / "1.qrl", places[1] / "2.qrl", places[0] / "2.qrl"]
    linux = saved(both.linux, preset, files[0])
    found = []
    if saved(both.windows, preset, files[1]) != linux:
        found.append("saved otherwise by Windows")
    if saved(both.windows, files[0], files[2]) != linux:
        found.append("changed by Windows")
    if saved(both.linux, files[2], files[3]) != linux:
        found.append("changed on the way back")
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--short", action="store_true")
    parser.add_argument("linux")
    parser.add_argument("windows")
    options = parser.parse_args()
    failed = 0
    with BothPlatforms(options.linux, options.windows) as both:
        presets = sorted((both.linux.prefix / "data/Ostrand/Quorel/Banks").glob("[0-8]*/*.qrl"))
        if options.short:
            presets = presets[::12]
        for platform in (both.linux, both.windows):
            own = platform.place("own") / f"{OWN_NAME}.qrl"
            platform.render(*OWN_SOUND, "--save-preset", own)
            presets.append(own)
        if presets[-1].read_bytes() != presets[-2].read_bytes():
            sys.exit("the same sound gives other bytes on Windows")
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            for preset, found in zip(presets, pool.map(lambda p: problems(both, *p), enumerate(presets))):
                print(f"{preset.stem:30} {', '.join(found) or 'the same bytes'}", flush=True)
                failed += bool(found)
    print(f"{len(presets) - failed} of {len(presets)} presets are the same on both platforms")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
