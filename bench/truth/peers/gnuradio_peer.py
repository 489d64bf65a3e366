#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Receives signals with blocks of GNU Radio: for each line of JSON an output file.

First prints the version of GNU Radio, then an empty line for each signal that is done. Rows of an
output file are five 64-bit numbers: number of the carrier's loop, I, Q, position in samples, phase
taken off in rad. Ends with 3 where GNU Radio is not installed.
"""
import json
import math
import os
import sys

os.environ.setdefault("GR_CONF_LOG_LOG_LEVEL", "warn")  # blocks say how they are set up
try:
    import numpy
    from gnuradio import blocks, digital, gr
    from gnuradio.filter import firdes
except ImportError:
    sys.exit(3)

REACH = 24  # symbols of the matched filter on either side
BEHIND = 65536  # samples of silence that push the last symbols out


def filters_for(per_symbol):
    """Filters of the bank, such that a symbol is a whole number of them.

    The block counts what is left several times, and must find a wrong clock first.
    """
    part = per_symbol - math.floor(per_symbol)
    return min(range(64, 129), key=lambda count: abs(part * count - round(part * count)))


def timed(samples, order):
    """Symbols and their positions."""
    per_symbol = order["samples_per_symbol"]
    filters = filters_for(per_symbol)
    taps = firdes.root_raised_cosine(filters, filters * per_symbol, 1.0, order["roll_off"],
                                     int(2 * REACH * filters * per_symbol) + 1)
    sync = digital.pfb_clock_sync_ccf(per_symbol, order["timing_loop"], taps, filters,
                                      filters / 2, 1.5, 1)
    symbols, arms = blocks.vector_sink_c(), blocks.vector_sink_f()
    source = blocks.vector_source_c(numpy.concatenate((samples, numpy.zeros(BEHIND))))
    source.set_min_output_buffer(BEHIND)  # of long symbols the filters take many
    flow = gr.top_block()
    flow.connect(source, sync, symbols)
    for port in (1, 2):
        flow.connect((sync, port), blocks.null_sink(gr.sizeof_float))
    flow.connect((sync, 3), arms)
    flow.run()
    # Symbols are whole samples and so many arms of the filter bank apart.
    step = (per_symbol - math.floor(per_symbol)) * filters
    moved = numpy.diff(numpy.array(arms.data())) - step
    moved -= filters * numpy.round(moved / filters)
    apart = per_symbol + moved / filters
    positions = numpy.concatenate(([0.0], numpy.cumsum(apart))) - REACH * per_symbol
    count = int(numpy.searchsorted(positions, len(samples)))
    return numpy.array(symbols.data())[:count], positions[:count]


def followed(symbols, order, loop):
    """Symbols of a recovered carrier, and its phases."""
    points = [complex(*point) for point in order["points"]]
    constellation = digital.constellation_calcdist(
        points, [], order["symmetry"], 1, digital.constellation.POWER_NORMALIZATION)
    receiver = digital.constellation_receiver_cb(constellation.base(), loop, -0.25, 0.25)
    phases, values = blocks.vector_sink_f(), blocks.vector_sink_c()
    flow = gr.top_block()
    flow.connect(blocks.vector_source_c(symbols), receiver, blocks.null_sink(gr.sizeof_char))
    for port in (1, 3):
        flow.connect((receiver, port), blocks.null_sink(gr.sizeof_float))
    flow.connect((receiver, 2), phases)
    flow.connect((receiver, 4), values)
    flow.run()
    return numpy.array(values.data()), numpy.unwrap(numpy.array(phases.data()))


def receive(order):
    samples = numpy.fromfile(order["input"], numpy.complex64)
    turn = 2.0 * math.pi * order["carrier"]
    samples = samples * numpy.exp(-1j * turn * numpy.arange(len(samples)))
    symbols, positions = timed(samples, order)
    level = math.sqrt((1.0 + order["noise"]) / numpy.mean(numpy.abs(symbols) ** 2))
    rows = []
    for index, loop in enumerate(order["carrier_loops"]):
        values, phases = followed(level * symbols, order, loop)
        count = min(len(values), len(positions))
        # The receiver's phase is that by which it turns, the carrier's with another sign.
        rows.append(numpy.column_stack((numpy.full(count, index), values.real[:count],
                                        values.imag[:count], positions[:count],
                                        turn * positions[:count] - phases[:count])))
    numpy.concatenate(rows).astype(numpy.float64).tofile(order["output"])


def main():
    answers = os.fdopen(os.dup(1), "w")
    os.dup2(2, 1)  # blocks print what they do
    print(gr.version(), file=answers, flush=True)
    for line in sys.stdin:
        receive(json.loads(line))
        print(file=answers, flush=True)


if __name__ == "__main__":
    main()
