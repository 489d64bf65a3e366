#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Counts traces into a grid with numpy's histogram2d, and prints the seconds that a trace took.

Arguments: file of single-precision samples, samples of a trace, columns, rows, lowest and highest
level. A trace is a point in each column, interpolated beforehand: that does not count.
Ends with 3 where numpy is not installed.
"""
import sys
import time

try:
    import numpy
except ImportError:
    sys.exit(3)


def main():
    path, length, columns, rows = sys.argv[1], *map(int, sys.argv[2:5])
    bottom, top = map(float, sys.argv[5:7])
    traces = numpy.fromfile(path, numpy.float32).reshape(-1, length)
    times = (numpy.arange(columns) + 0.5) / columns
    given = numpy.linspace(0.0, 1.0, length)
    levels = numpy.concatenate([numpy.interp(times, given, trace) for trace in traces])
    places = numpy.tile(times, len(traces))
    counts = numpy.zeros((columns, rows))
    start = time.perf_counter()
    counts += numpy.histogram2d(places, levels, (columns, rows), ((0.0, 1.0), (bottom, top)))[0]
    print((time.perf_counter() - start) / len(traces))
    return 0 if counts.sum() > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
