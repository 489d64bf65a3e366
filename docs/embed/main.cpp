// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include <orvane/VCGLTimeDiagram.h>

#include <QtWidgets>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    VCGLTimeDiagram view;          // a widget like any other
    view.SetXAxisRange(-0.5, 0.0); // seconds
    view.SetBaudrate(1000.0);      // samples per second
    view.show();

    QTimer timer; // gives the view a trace of 40 samples whenever there are new ones
    QObject::connect(&timer, &QTimer::timeout, &view, [&view, n = 0]() mutable {
        std::vector<double> samples(40);
        for (double& sample : samples)
            sample = 0.8 * qSin(0.05 * n++);
        view.FillData(samples.data(), samples.size(), true);
    });
    timer.start(40);
    return application.exec();
}
