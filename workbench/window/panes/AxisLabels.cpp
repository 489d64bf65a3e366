// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/AxisLabels.h"

#include "platform/glbase/axisDefinition.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/player/Units.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int mostDecimals = 12;
constexpr int readOutDecimals = 2; // more than the labels have: they tell pixels apart

} // namespace

std::shared_ptr<AxisLabels> AxisLabels::install(axisDefinition& axis)
{
    const std::shared_ptr<AxisLabels> labels(new AxisLabels(axis));
    axis.SetStringFormatter(labels);
    return labels;
}

void AxisLabels::setUnit(const QString& unit, double factor)
{
    m_unit = unit;
    m_factor = factor;
}

QString AxisLabels::text(double value, int moreDecimals, double factor) const
{
    const auto& ticks = m_axis.GetTicks();
    constexpr int freeDigits = 6; // where no grid asks for more or less
    if (ticks.size() < 2)
        return QString::number(factor * value, 'g', freeDigits);
    const double step = factor * std::abs(ticks[1].value - ticks[0].value);
    const double place = std::floor(std::log10(step) + 1e-9); // of no step infinitely many
    const double decimals = std::clamp(moreDecimals - place, 0.0, double{mostDecimals});
    QString text = QString::number(factor * value, 'f', static_cast<int>(decimals));
    if (text.startsWith(QLatin1Char('-')) && text.toDouble() == 0.0)
        text.remove(0, 1);
    return text;
}

const QString& AxisLabels::Format(double value)
{
    m_text = text(value, 0, 1.0);
    return m_text;
}

const QString& AxisLabels::FormatWithUnit(double value)
{
    m_text = text(value, readOutDecimals, m_factor) + QChar(0x2009) + m_unit;
    return m_text;
}

AxisUnits::AxisUnits(VCGLTimeDiagram& time, VCGLEyeDiagram& eye)
    : m_time(time)
    , m_timeLabels(AxisLabels::install(time.GetXAxisDefinition()))
    , m_eyeLabels(AxisLabels::install(eye.GetXAxisDefinition()))
{}

void AxisUnits::show(const SignalFeed& feed)
{
    const TimeScale& scale = feed.scale();
    m_timeLabels->setUnit(units::sign(scale), 1.0);
    const double symbols = feed.eye().cut().symbolCount;
    if (scale.unit == TimeScale::Unit::Symbol || !scale.symbolRate)
        m_eyeLabels->setUnit(QStringLiteral("UI"), symbols);
    else
        m_eyeLabels->setUnit(units::sign(scale), symbols / *scale.symbolRate / scale.unitSeconds());
    m_time.SetYUnit(feed.levelUnit());
}
