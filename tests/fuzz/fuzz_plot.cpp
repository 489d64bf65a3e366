// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// A density plot that a host and its user do anything with.
#include "Attack.h"
#include "density/DensityPlot.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <memory>
#include <vector>

using density::DensityPlot;

namespace {

QPointF anyPlace(Bytes& input, const QWidget& widget)
{
    return {widget.width() * (input.take<std::int16_t>() / 24000.0),
            widget.height() * (input.take<std::int16_t>() / 24000.0)};
}

void useMouse(DensityPlot& plot, Bytes& input)
{
    constexpr Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    constexpr Qt::KeyboardModifier keys[] = {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier,
                                             Qt::AltModifier};
    constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseMove,
                                      QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};
    const Qt::MouseButton button = input.oneOf(buttons);
    const Qt::KeyboardModifiers modifiers = input.oneOf(keys);
    // A drag mostly, but not always in its order.
    for (int i = 0; i < 3; ++i) {
        const QEvent::Type type = input.flag() ? types[i] : input.oneOf(types);
        const QPointF place = anyPlace(input, plot);
        QMouseEvent event(type, place, plot.mapToGlobal(place.toPoint()), button, button,
                          modifiers);
        QCoreApplication::sendEvent(&plot, &event);
    }
    constexpr int turns[] = {0, 120, -120, 1, 100000, INT32_MIN, INT32_MAX};
    const QPointF place = anyPlace(input, plot);
    QWheelEvent wheel(place, place, {}, {input.oneOf(turns), input.oneOf(turns)}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&plot, &wheel);
}

void useKeys(DensityPlot& plot, Bytes& input)
{
    constexpr int keys[] = {Qt::Key_C,     Qt::Key_L,        Qt::Key_S,      Qt::Key_Space,
                            Qt::Key_Tab,   Qt::Key_Up,       Qt::Key_Left,   Qt::Key_Right,
                            Qt::Key_Down,  Qt::Key_Home,     Qt::Key_Delete, Qt::Key_Escape,
                            Qt::Key_Enter, Qt::Key_Backspace};
    QKeyEvent key(QEvent::KeyPress, input.oneOf(keys),
                  input.flag() ? Qt::ShiftModifier : Qt::NoModifier);
    QCoreApplication::sendEvent(&plot, &key);
    QKeyEvent step(QEvent::KeyPress, input.flag() ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
    QCoreApplication::sendEvent(&plot, &step);
}

void addSymbols(DensityPlot& plot, Bytes& input)
{
    const std::size_t length = plot.sampleCount();
    std::vector<double> samples(input.below(100) * length + input.below(2));
    const double odd = input.number();
    std::uint32_t random = input.take<std::uint32_t>();
    for (double& sample : samples) {
        random = random * 1664525 + 1013904223;
        sample = random % 64 == 0 ? odd : random / 4294967296.0;
    }
    plot.addData(samples.data(), samples.size(), input.take<std::int64_t>());
    plot.addTorn(input.take<std::int16_t>());
    plot.setLitSymbol(input.take<std::int64_t>());
}

void setAnything(DensityPlot& plot, Bytes& input)
{
    constexpr density::Persistence::Kind kinds[] = {density::Persistence::Kind::Infinite,
                                                    density::Persistence::Kind::Newest,
                                                    density::Persistence::Kind::Fading};
    switch (input.below(7)) {
    case 0:
        plot.setHome({input.number(), input.number(), input.number(), input.number()});
        break;
    case 1:
        plot.autoScale();
        break;
    case 2:
        plot.setPersistence({input.oneOf(kinds), input.number()});
        break;
    case 3:
        plot.setSymbolRate(input.number());
        plot.setUnit(QStringLiteral("V"));
        break;
    case 4:
        plot.setColors(static_cast<density::ColorScale>(input.below(3)), input.flag());
        plot.showCursors(input.flag());
        break;
    case 5: {
        density::Mask mask = density::Mask::standard().front();
        mask.polygons[0][0] = {input.number(), input.number()};
        plot.setMask(input.flag() ? std::optional(mask) : std::nullopt, input.number(),
                     input.number(), input.number());
        break;
    }
    default:
        plot.setIdeal({{input.number(), input.number()}, {1.0, 0.0}});
        plot.setPaused(input.flag());
    }
}

} // namespace

void attackPlot(Bytes& input)
{
    static int argumentCount = 1;
    static char name[] = "plot", *arguments[] = {name, nullptr};
    if (!qApp)
        new QApplication(argumentCount, arguments);
    density::Counter::Settings settings;
    if (input.flag())
        settings.shape = density::TraceShape{static_cast<int>(input.below(60)), input.number()};
    DensityPlot plot(input.flag() ? DensityPlot::Kind::Eye : DensityPlot::Kind::Constellation,
                     settings);
    plot.resize(300, 200);
    while (!input.isEmpty()) {
        switch (input.below(8)) {
        case 0:
            plot.resize(input.take<std::uint16_t>() % 2000, input.take<std::uint16_t>() % 2000);
            break;
        case 1:
            plot.clear();
            break;
        case 2:
            useMouse(plot, input);
            break;
        case 3:
            useKeys(plot, input);
            break;
        case 4:
            setAnything(plot, input);
            break;
        case 5: {
            QImage picture(120, 80, QImage::Format_ARGB32_Premultiplied);
            QPainter painter(&picture);
            plot.renderPicture(painter, {input.take<std::int16_t>(), input.take<std::int16_t>()});
            break;
        }
        default:
            addSymbols(plot, input);
        }
        if (input.flag()) {
            plot.counting().wait();
            QCoreApplication::processEvents();
        }
        if (input.flag())
            plot.grab();
    }
}
