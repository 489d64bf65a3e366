// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Linked to the examples: looks at their views until the traces or points of each reach over much
// of its height, and ends the program; with a failure when that does not happen in time.
#include <orvane/platform/gui/ColorSet.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

static bool ShowsSignal(QWidget& view, IColorBase::ECOLOR color)
{
    const QRgb wanted = ColorSet::Instance()[color].rgb();
    const QImage picture = view.grab().toImage();
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
        int x = 0;
        while (x < picture.width() && picture.pixel(x, y) != wanted)
            ++x;
        rows += x < picture.width();
    }
    return rows > picture.height() / 3;
}

static bool AllShowTheirs()
{
    int count = 0;
    for (QWidget* widget : QApplication::allWidgets()) {
        for (const auto& [view, color] : {std::pair("VCGLTimeDiagram", IColorBase::colTimeTrace),
                                          {"VCGLEyeDiagram", IColorBase::colEyeTrace},
                                          {"VCGLIQDiagram", IColorBase::colIQPoint}}) {
            if (!widget->inherits(view))
                continue;
            if (!ShowsSignal(*widget, color))
                return false;
            ++count;
        }
    }
    return count > 0;
}

static void Watch()
{
    auto* look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, qApp, [] {
        if (AllShowTheirs())
            QCoreApplication::exit(0);
    });
    look->start(100);
    QTimer::singleShot(60000, qApp, [] { QCoreApplication::exit(1); });
}
Q_COREAPP_STARTUP_FUNCTION(Watch)
