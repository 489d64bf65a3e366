#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Shows complex samples with GNU Radio's time, constellation and eye sinks, 30 times a second.

Arguments: file of complex 32-bit samples, sample rate in Hz, samples a symbol, width and height of
the window. Ends with 3 where GNU Radio or its Qt sinks are not installed.
"""
import signal
import sys

try:
    from gnuradio import blocks, gr, qtgui
    from PyQt5 import Qt, sip
except ImportError:
    sys.exit(3)

UPDATE_PERIOD = 1.0 / 30.0  # s


def main():
    path, sample_rate, per_symbol = sys.argv[1], float(sys.argv[2]), int(sys.argv[3])
    width, height = map(int, sys.argv[4:6])
    application = Qt.QApplication(sys.argv[:1])
    flow = gr.top_block()
    source = blocks.file_source(gr.sizeof_gr_complex, path, True)
    throttle = blocks.throttle(gr.sizeof_gr_complex, sample_rate, True)
    flow.connect(source, throttle)
    points = 400 * per_symbol  # as many symbols as Orvane shows at first
    time = qtgui.time_sink_c(points, sample_rate, "Time", 1, None)
    constellation = qtgui.const_sink_c(400, "Constellation", 1, None)
    eye = qtgui.eye_sink_c(points, sample_rate, 1, None)
    eye.set_samp_per_symbol(per_symbol)
    decimated = blocks.keep_one_in_n(gr.sizeof_gr_complex, per_symbol)
    flow.connect(throttle, time)
    flow.connect(throttle, decimated, constellation)
    flow.connect(throttle, eye)
    window = Qt.QWidget()
    layout = Qt.QGridLayout(window)
    for sink, place in ((time, (0, 0, 1, 2)), (eye, (1, 0, 1, 1)), (constellation, (1, 1, 1, 1))):
        sink.set_update_time(UPDATE_PERIOD)
        layout.addWidget(sip.wrapinstance(sink.qwidget(), Qt.QWidget), *place)
    window.resize(width, height)
    window.show()
    signal.signal(signal.SIGTERM, signal.SIG_DFL)
    flow.start()
    application.exec_()


if __name__ == "__main__":
    main()
