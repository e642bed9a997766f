#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Derives the high-rate cabinet filters (rows 5 to 7 of cabFeed and cabBack) from rows 1 to 3.

Usage: derive_cabinet.py PATH/TO/AmpTables.cpp [--check]

Without --check it prints the six rows as C++ text (half a minute); with it, it measures the rows that the file holds.

A high-rate row runs at twice the rate, so at half the angle: its magnitude at angle w is to be that of the low-rate
row at 2 w. Up to w = pi / 2 that is the target; from there it stays level. The target is made minimum phase through
its cepstrum, and a filter of 32 feed-forward and 31 feedback taps is fitted to it by iterated linear least squares of
the relative error (Sanathanan and Koerner), with more weight from round to round where the error is large (Lawson).
The damping term keeps the taps small: the filter runs in single precision, and large taps that cancel would be heard
as noise. Of all rounds the one with the smallest deviation counts.
"""
import cmath
import math
import re
import sys

TAPS = 32
GRID = 2048          # points from 0 to 2 pi for the cepstrum
BAND = 0.44 * math.pi  # full weight up to here: 19.4 kHz at 88.2 kHz
DAMPING = 0.2
ROUNDS = 20
CHECK_ANGLE = 2 * math.pi * 18000 / 88200


def read_rows(path):
    rows = {}
    text = open(path, encoding="utf-8").read()
    for name in ("cabFeed", "cabBack"):
        body = re.search(name + r"\[8\]\[32\] = \{(.*?)\n\};", text, re.S).group(1)
        body = re.sub(r"//[^\n]*", "", body)
        groups = re.findall(r"\{([^{}]*)\}", body)
        rows[name] = [[float(v.rstrip("f")) for v in g.split(",") if v.strip()] for g in groups]
    return rows


def response(feed, back, w):
    z = cmath.exp(-1j * w)
    num = den = 0j
    for k in range(TAPS - 1, -1, -1):
        num = num * z + feed[k]
        den = den * z + (back[k] if k else 0)
    return num / (1 - den)


def fft(x, sign):
    n = len(x)
    if n == 1:
        return x
    even, odd = fft(x[0::2], sign), fft(x[1::2], sign)
    turned = [cmath.exp(sign * 2j * math.pi * k / n) * odd[k] for k in range(n // 2)]
    return [even[k] + turned[k] for k in range(n // 2)] + [even[k] - turned[k] for k in range(n // 2)]


def target(feed, back):
    """Minimum-phase target on the grid from 0 to pi."""
    logs = []
    for i in range(GRID):
        w = 2 * math.pi * min(i, GRID - i) / GRID
        logs.append(math.log(abs(response(feed, back, min(2 * w, math.pi))) + 1e-9))
    cepstrum = [c.real / GRID for c in fft([complex(v) for v in logs], 1)]
    half = GRID // 2
    folded = [cepstrum[0]] + [2 * c for c in cepstrum[1:half]] + [cepstrum[half]] + [0.0] * (half - 1)
    return [cmath.exp(v) for v in fft([complex(v) for v in folded], -1)][: half + 1]


def least_squares(rows, values):
    """Householder QR; rows is a list of equations."""
    m, n = len(rows), len(rows[0])
    a = [r[:] + [v] for r, v in zip(rows, values)]
    for j in range(n):
        norm = math.sqrt(sum(a[i][j] ** 2 for i in range(j, m)))
        if norm == 0:
            continue
        alpha = -norm if a[j][j] > 0 else norm
        v = [a[i][j] for i in range(j, m)]
        v[0] -= alpha
        vv = sum(x * x for x in v)
        for c in range(j, n + 1):
            s = 2 * sum(v[i - j] * a[i][c] for i in range(j, m)) / vv
            for i in range(j, m):
                a[i][c] -= s * v[i - j]
    x = [0.0] * n
    for j in range(n - 1, -1, -1):
        x[j] = (a[j][n] - sum(a[j][c] * x[c] for c in range(j + 1, n))) / a[j][j]
    return x


def roots(poly):
    """Durand-Kerner; poly from the highest power down, monic."""
    n = len(poly) - 1
    z = [(0.4 + 0.9j) ** k * 0.95 for k in range(n)]
    for _ in range(2000):
        moved = 0.0
        for i in range(n):
            p = 0j
            for c in poly:
                p = p * z[i] + c
            q = 1 + 0j
            for j in range(n):
                if j != i:
                    q *= z[i] - z[j]
            step = p / q
            z[i] -= step
            moved = max(moved, abs(step))
        if moved < 1e-13:
            break
    return z


def powers(w):
    return [cmath.exp(-1j * w * k) for k in range(TAPS)]


def fit(feed, back):
    goals = target(feed, back)[::4]
    angles = [math.pi * i / (len(goals) - 1) for i in range(len(goals))]
    bases = [powers(w) for w in angles]
    weights = [1.0 if w <= BAND else 0.05 for w in angles]
    den = [1.0] + [0.0] * (TAPS - 1)
    best = None
    for _ in range(ROUNDS):
        rows, values = [], []
        for z, goal, weight in zip(bases, goals, weights):
            scale = weight / abs(goal * sum(c * e for c, e in zip(den, z)))
            equation = [scale * e for e in z] + [-scale * goal * e for e in z[1:]]
            for part in ("real", "imag"):
                rows.append([getattr(e, part) for e in equation])
                values.append(getattr(scale * goal, part))
        for i in range(2 * TAPS - 1):
            rows.append([DAMPING if c == i else 0.0 for c in range(2 * TAPS - 1)])
            values.append(0.0)
        x = least_squares(rows, values)
        num, den = x[:TAPS], [1.0] + x[TAPS:]
        row = [float(f"{v:.7g}") for v in num], [0.0] + [float(f"{-v:.7g}") for v in den[1:]]
        worst, pole = measure((feed, back), row)
        if pole < 0.995 and (best is None or worst < best[0]):
            best = worst, row

        errors = [abs(20 * math.log10(abs(response(*row, w)) / abs(g))) for w, g in zip(angles, goals)]
        mean = sum(e for e, w in zip(errors, angles) if w <= CHECK_ANGLE) / sum(w <= CHECK_ANGLE for w in angles)
        for i, w in enumerate(angles):
            if w <= BAND:
                weights[i] *= math.sqrt((errors[i] + 0.3 * mean) / (1.3 * mean))
                weights[i] = min(50.0, max(0.05, weights[i]))
    return best[1]


def measure(low, high):
    """Largest deviation in dB from 10 Hz to 18 kHz at 88.2 kHz, and the radius of the outermost pole."""
    worst = 0.0
    for i in range(400):
        w = CHECK_ANGLE * max(i / 399, 10 / 18000)
        ratio = abs(response(*high, w)) / abs(response(*low, 2 * w))
        worst = max(worst, abs(20 * math.log10(ratio)))
    return worst, max(abs(r) for r in roots([1.0] + [-b for b in high[1][1:]]))


def main():
    rows = read_rows(sys.argv[1])
    feeds, backs = [], []
    for i in (1, 2, 3):
        low = rows["cabFeed"][i], rows["cabBack"][i]
        high = (rows["cabFeed"][i + 4], rows["cabBack"][i + 4]) if "--check" in sys.argv else fit(*low)
        worst, pole = measure(low, high)
        print(f"row {i + 4}: deviation up to 18 kHz {worst:.3f} dB, outermost pole {pole:.4f}", file=sys.stderr)
        feeds.append(high[0])
        backs.append(high[1])
    if "--check" not in sys.argv:
        for name, table in (("cabFeed", feeds), ("cabBack", backs)):
            print(f"// {name}, rows 5 to 7")
            for row in table:
                print("    {" + ", ".join(f"{v!r}f" for v in row) + "},")


main()
