#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/design_golden.txt, what tests/design_test.cpp compares the filter designers with: SciPy's designs of the
same requests (Debian's python3-scipy 1.10.1). A line is the function, its numbers, and what it has to give, apart by
semicolons. Run by hand when requests are added; smoothing taps are formed exactly, since SciPy's lose their digits.
"""
import pathlib
from fractions import Fraction

import numpy as np
import scipy.signal as sig
from scipy.signal import windows

BANDS = ["lowpass", "highpass", "bandpass", "bandstop"]
rows = []


def row(name, numbers, values):
    text = lambda x: " ".join(f"{float(v):.17g}" for v in x)
    rows.append(f"{name};{text(numbers)};{text(np.ravel(values))}")


def recursive():
    kinds = {
        "Butterworth": ([], lambda n, w, b: sig.butter(n, w, b, output="sos")),
        "Chebyshev1": ([0.5], lambda n, w, b: sig.cheby1(n, 0.5, w, b, output="sos")),
        "Chebyshev2": ([40], lambda n, w, b: sig.cheby2(n, 40, w, b, output="sos")),
        "Elliptic": ([0.5, 60], lambda n, w, b: sig.ellip(n, 0.5, 60, w, b, output="sos")),
        "Bessel 0": ([], lambda n, w, b: sig.bessel(n, w, b, output="sos")),
        "Bessel 1": ([], lambda n, w, b: sig.bessel(n, w, b, output="sos", norm="delay")),
        "Bessel 2": ([], lambda n, w, b: sig.bessel(n, w, b, output="sos", norm="mag")),
    }
    for name, (extra, design) in kinds.items():
        for order in (1, 2, 5, 8, 17):
            for band in range(4):
                for low, high in ((0.1, 0.2), (5 / 48000, 0.3))[: 2 if order < 8 else 1]:
                    edges = 2 * low if band < 2 else [2 * low, 2 * high]
                    row(name, [order, band, low, high] + extra, design(order, edges, BANDS[band]))


def window_rows():
    names = ["boxcar", "triang", "bartlett", "hann", "hamming", "blackman", "nuttall", "blackmanharris", "flattop", "cosine",
             "bohman", "parzen", ("tukey", 0.3), ("gaussian", 4), ("kaiser", 8.6), ("dpss", 2.5)]
    for kind, name in enumerate(names):
        for n in (9, 16):
            for periodic in (0, 1):
                parameter = name[1] if isinstance(name, tuple) else 0
                row("Window", [n, kind, parameter, periodic], sig.get_window(name, n, fftbins=bool(periodic)))
    row("Window", [5, 12, 0, 0], windows.tukey(5, 0))
    row("Window", [5, 12, 1, 0], windows.tukey(5, 1))
    row("Window", [7, 14, 100, 0], windows.kaiser(7, 100))


def finite():
    for n in (1, 20, 21):
        for band, edges in enumerate((0.2, 0.4, [0.2, 0.6], [0.2, 0.6])):
            if n % 2 or band in (0, 2):
                low, high = (edges, 0) if band < 2 else edges
                row("FirWindow", [n, band, low / 2, high / 2], sig.firwin(n, edges, pass_zero=BANDS[band]))
    for attenuation, width in ((8, 0.3), (20, 0.1), (21, 0.1), (40, 0.05), (90, 0.01)):
        row("Kaiser", [attenuation, width], sig.kaiserord(attenuation, 2 * width))
    for n, edges, gains, weights in ((1, [0, 0.5], [1, 0], [1]), (21, [0, 0.1, 0.2, 0.5], [1, 1, 0, 0], [1, 1]),
                                     (33, [0, 0.1, 0.15, 0.3, 0.35, 0.5], [0, 0, 1, 0.5, 0, 0], [1, 2, 3])):
        row("LeastSquares", [n, len(weights), *edges, *gains, *weights], sig.firls(n, edges, gains, weights, fs=1))
    kinds = ["bandpass", "differentiator", "hilbert"]
    for n, edges, gains, weights, kind in (
            (2, [0, 0.1, 0.2, 0.5], [1, 0], [1, 1], 0), (3, [0, 0.1, 0.2, 0.5], [1, 0], [1, 1], 0),
            (31, [0, 0.1, 0.2, 0.5], [1, 0], [1, 1], 0), (32, [0, 0.1, 0.2, 0.5], [1, 0], [1, 10], 0),
            (73, [0, 0.1, 0.15, 0.3, 0.35, 0.5], [0, 1, 0], [1, 2, 3], 0), (101, [0, 0.2, 0.22, 0.5], [1, 0], [1, 1], 0),
            (20, [0.05, 0.45], [1], [1], 2), (31, [0.05, 0.45], [1], [1], 2), (20, [0, 0.45], [1], [1], 1),
            (21, [0, 0.2, 0.3, 0.5], [1, 0], [1, 1], 1)):
        taps = sig.remez(n, edges, gains, weight=weights, type=kinds[kind], fs=1, maxiter=200)
        row("Equiripple", [n, len(gains), kind, *edges, *gains, *weights], taps)


def smoothing(n, order, derivative):
    """The taps of least squares in rational numbers: those of the normal equations."""
    x = range(-(n // 2), n // 2 + 1)
    a = [[Fraction(sum(v ** (i + k) for v in x)) for k in range(order + 1)] + [Fraction(i == derivative)]
         for i in range(order + 1)]
    for i in range(order + 1):
        pivot = next(r for r in range(i, order + 1) if a[r][i])
        a[i], a[pivot] = a[pivot], a[i]
        a[i] = [v / a[i][i] for v in a[i]]
        for r in range(order + 1):
            if r != i:
                a[r] = [v - a[r][i] * w for v, w in zip(a[r], a[i])]
    c, factorial = [r[-1] for r in a], 1
    for k in range(2, derivative + 1):
        factorial *= k
    return [float(factorial * sum(c[k] * v**k for k in range(order + 1))) for v in reversed(x)]


def single():
    for n, order, derivative in ((1, 0, 0), (5, 2, 0), (11, 3, 1), (21, 4, 2), (51, 10, 0), (101, 20, 0), (31, 20, 0)):
        row("SavitzkyGolay", [n, order, derivative], smoothing(n, order, derivative))
    row("Section", [3, 0.1, 5, 0], np.concatenate(sig.iirnotch(0.2, 5)))
    row("Section", [9, 0.01, 30, 0], np.concatenate(sig.iirpeak(0.02, 30)))
    row("Section", [8, 0.01, 0, 0], sig.butter(1, 0.02, "high", output="sos"))
    row("Section", [0, 0.1, 0.5**0.5, 0], sig.butter(2, 0.2, "low", output="sos"))
    row("Section", [1, 0.1, 0.5**0.5, 0], sig.butter(2, 0.2, "high", output="sos"))


recursive()
window_rows()
finite()
single()
(pathlib.Path(__file__).parent.parent / "tests/design_golden.txt").write_text("\n".join(rows) + "\n")
