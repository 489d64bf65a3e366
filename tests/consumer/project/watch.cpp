// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Linked to the example: looks at the example's window until a trace reaches over much of its
// height, and ends the program; with a failure when that does not happen in time.
#include <orvane/platform/gui/ColorSet.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

static bool ShowsTrace()
{
    const QRgb trace = ColorSet::Instance()[IColorBase::colTimeTrace].rgb();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const QImage picture = window->grab().toImage();
        int rows = 0;
        for (int y = 0; y < picture.height(); ++y) {
            int x = 0;
            while (x < picture.width() && picture.pixel(x, y) != trace)
                ++x;
            rows += x < picture.width();
        }
        if (rows > picture.height() / 2)
            return true;
    }
    return false;
}

static void Watch()
{
    auto* look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, qApp, [] {
        if (ShowsTrace())
            QCoreApplication::exit(0);
    });
    look->start(100);
    QTimer::singleShot(60000, qApp, [] { QCoreApplication::exit(1); });
}
Q_COREAPP_STARTUP_FUNCTION(Watch)
