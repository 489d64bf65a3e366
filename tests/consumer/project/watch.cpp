// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Linked to the example: looks at the example's window until a trace crosses most of it, and ends
// the program; with a failure when that does not happen in time.
#include <orvane/platform/gui/ColorSet.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

static bool ShowsTrace()
{
    const QRgb trace = ColorSet::Instance()[133].rgb();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const QImage picture = window->grab().toImage();
        int columns = 0;
        for (int x = 0; x < picture.width(); ++x) {
            int y = 0;
            while (y < picture.height() && picture.pixel(x, y) != trace)
                ++y;
            columns += y < picture.height();
        }
        if (columns > picture.width() / 2)
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
