#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Receives QPSK with blocks of GNU Radio, and prints the processor time that they took, s.

Arguments: file of complex 32-bit samples, sample rate in Hz, samples a symbol, shift in Hz.
Ends with 3 where GNU Radio is not installed.
"""
import math
import resource
import sys

try:
    from gnuradio import analog, blocks, digital, filter, gr
    from gnuradio.filter import firdes
except ImportError:
    sys.exit(3)


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_SELF)
    return usage.ru_utime + usage.ru_stime


def main():
    path, sample_rate, per_symbol, shift = sys.argv[1], *map(float, sys.argv[2:5])
    phases = 32
    half_band = 0.75 * sample_rate / per_symbol
    flow = gr.top_block()
    symbols = blocks.null_sink(gr.sizeof_gr_complex)
    flow.connect(
        blocks.file_source(gr.sizeof_gr_complex, path),
        blocks.rotator_cc(2.0 * math.pi * shift / sample_rate),
        filter.fir_filter_ccf(1, firdes.low_pass(1.0, sample_rate, half_band, 0.3 * half_band)),
        analog.pwr_squelch_cc(-20.0, 1e-3),
        analog.agc_cc(1e-3, 1.0, 1.0),
        digital.pfb_clock_sync_ccf(
            per_symbol, 0.01,
            firdes.root_raised_cosine(phases, phases * per_symbol, 1.0, 0.35,
                                      int(24 * phases * per_symbol) + 1),
            phases, phases / 2, 1.5, 1),
        digital.costas_loop_cc(0.01, 4),
        symbols)
    start = processor_seconds()
    flow.run()
    print(processor_seconds() - start)
    return 0 if symbols.nitems_read(0) > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
