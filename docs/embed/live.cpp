// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include <orvane/VCGLEyeDiagram.h>
#include <orvane/VCGLIQDiagram.h>
#include <orvane/VCGLTimeDiagram.h>
#include <orvane/platform/values/Handover.h>

#include <QtWidgets>
#include <algorithm>
#include <future>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QSplitter window;
    VCGLTimeDiagram time(&window);
    VCGLEyeDiagram eye(&window);
    VCGLIQDiagram iq(&window);
    time.SetXAxisRange(-1.0, 0.0); // seconds
    time.SetBaudrate(100.0);       // samples per second
    window.show();
    values::Handover<std::vector<double>> queue; // the producer waits while it is full
    const auto producer = std::async(std::launch::async, [&queue, n = 0]() mutable {
        std::vector<double> wave(100);
        do {
            std::generate(wave.begin(), wave.end(), [&n] { return 0.9 * qSin(0.63 * n++); });
        } while (queue.push(wave, 1));
    });
    QTimer frame;
    QObject::connect(&frame, &QTimer::timeout, [&] {
        if (const auto wave = queue.pop(std::chrono::milliseconds(0))) {
            time.FillData(wave->data(), wave->size(), true);
            eye.FillData(wave->data(), wave->size(), true);
            iq.AddData(wave->data(), wave->size()); // I, Q, I, Q...
        }
    });
    frame.start(40);
    const int result = application.exec();
    queue.close(); // ends the producer
    return result;
}
