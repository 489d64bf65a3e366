// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "density/Truth.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

constexpr std::int64_t runt = 1234;

/// 5,000 traces of two levels, of which one touches 0 in the middle of its symbol.
inline std::vector<float> runtSignal()
{
    Truth truth;
    truth.noise = 0.02;
    truth.count = 5000;
    const density::KeptSignal kept = truth.make();
    std::vector<float> samples;
    for (std::size_t age = kept.count(); age-- > 0;)
        samples.insert(samples.end(), kept.at(age), kept.at(age) + kept.length());
    samples[runt * 33 + 16] = 0.0F;
    return samples;
}

/// A plot of a size, on a display.
struct Shown
{
    explicit Shown(density::DensityPlot::Kind kind = density::DensityPlot::Kind::Eye)
        : plot(kind)
    {
        plot.resize(700, 500);
        plot.show();
    }
    /// The pixel of a place, by the widget's own answer to a click.
    QPoint pixelOf(const QPointF& place)
    {
        QSignalSpy passed(&plot, &density::DensityPlot::passed);
        const auto placeOf = [&](const QPoint& pixel) {
            passed.clear();
            QTest::mouseClick(&plot, Qt::LeftButton, {}, pixel);
            EXPECT_TRUE(QTest::qWaitFor([&] { return passed.count() == 1; }));
            return passed.takeFirst().at(1).toPointF();
        };
        const QPoint one(200, 150), other(400, 300);
        const QPointF first = placeOf(one), second = placeOf(other);
        const QPointF perPixel((second.x() - first.x()) / 200.0, (second.y() - first.y()) / 150.0);
        return one + QPointF((place.x() - first.x()) / perPixel.x(),
                             (place.y() - first.y()) / perPixel.y())
                         .toPoint();
    }
    void drag(const QPoint& from, const std::vector<QPoint>& to,
              Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(&plot, button, {}, from);
        for (const QPoint& at : to) {
            QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), button, button,
                             modifiers);
            QApplication::sendEvent(&plot, &move);
        }
        QTest::mouseRelease(&plot, button, modifiers, to.back());
    }
    void wheel(const QPoint& at, int angle, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(at, plot.mapToGlobal(at), {}, {0, angle}, {}, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&plot, &event);
    }

    density::DensityPlot plot;
};

/// Such an eye that shows the traces with the runt.
struct ShownRunt : Shown
{
    ShownRunt()
    {
        plot.addData(samples.data(), samples.size(), 0);
        plot.settle();
    }

    const std::vector<float> samples = runtSignal();
};
