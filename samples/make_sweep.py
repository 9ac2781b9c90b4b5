#!/usr/bin/env python3
"""Makes sweep.csv: one minute of power sweeps over the airband, as command-line receivers write them.

Usage: make_sweep.py [DIRECTORY]; without one the file is written beside this script.
"""

import datetime
import math
import pathlib
import random
import sys

FROM, TO, HOP, BIN = 118_000_000, 138_000_000, 5_000_000, 25_000
SAMPLES = 8192
SWEEPS, SECONDS = 40, 1.5
START = datetime.datetime(2024, 3, 30, 9, 30, 0, 125_000)
NOISE, SPREAD = -71.0, 1.3

# frequency, bandwidth (Hz), level (dB), and the seconds at which it goes on and off
SIGNALS = (
    (118_112_500, 25_000, -48.0, [(0, 60)]),  # weather broadcast, always on
    (119_737_500, 25_000, -40.0, [(4, 11), (30, 33)]),
    (121_487_500, 25_000, -52.0, [(12, 20)]),
    (123_250_000, 50_000, -44.0, [(0, 9), (13, 24), (25, 41)]),
    (127_937_500, 25_000, -37.0, [(45, 60)]),
    (131_725_000, 100_000, -46.0, [(6, 7.4), (18, 19.4), (40, 41.4)]),  # data bursts
    (136_975_000, 50_000, -42.0, [(0, 60)]),
)


def hops():
    """In the order of a receiver that measures two pieces, 10 MHz apart, per tuning."""
    for low in range(FROM, FROM + 2 * HOP, HOP):
        yield low
        yield low + 2 * HOP


def level(low, second, noise):
    powers = [10 ** (noise / 10)]
    for frequency, bandwidth, decibel, times in SIGNALS:
        if any(on <= second < off for on, off in times) and abs(low + BIN / 2 - frequency) < (bandwidth + BIN) / 2:
            powers.append(10 ** (decibel / 10))
    return 10 * math.log10(sum(powers))


def main():
    directory = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    random.seed(118)
    rows = []
    for sweep in range(SWEEPS):
        second = sweep * SECONDS
        time = START + datetime.timedelta(seconds=second)
        for low in hops():
            bins = range(low, low + HOP, BIN)
            levels = ", ".join(f"{level(f, second, random.gauss(NOISE, SPREAD)):.2f}" for f in bins)
            rows.append(f"{time:%Y-%m-%d, %H:%M:%S.%f}, {low}, {low + HOP}, {BIN:.2f}, {SAMPLES}, {levels}\n")
    (directory / "sweep.csv").write_text("".join(rows), encoding="ascii", newline="\n")
    print(f"{SWEEPS} sweeps, {len(rows)} rows", file=sys.stderr)


if __name__ == "__main__":
    main()
