// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/IStringFormatter.h"

#include <QString>

#include <memory>

class axisDefinition;
class SignalFeed;
class VCGLEyeDiagram;
class VCGLTimeDiagram;

/// Labels of an axis: as many decimals as its grid needs, and the unit in the read-out.
class AxisLabels : public IStringFormatter
{
public:
    /// Replaces the formatter of an axis. The axis owns it, and outlives it.
    static std::shared_ptr<AxisLabels> install(axisDefinition& axis);

    /// @param factor  factor of values that have a unit.
    void setUnit(const QString& unit, double factor);

    const QString& Format(double value) override;
    const QString& FormatWithUnit(double value) override;

private:
    explicit AxisLabels(const axisDefinition& axis)
        : m_axis(axis)
    {}
    QString text(double value, int moreDecimals, double factor) const;

    const axisDefinition& m_axis;
    QString m_unit;
    double m_factor = 1.0;
    QString m_text;
};

/// The units of the axes of time and of levels, from the feed.
class AxisUnits
{
public:
    AxisUnits(VCGLTimeDiagram& time, VCGLEyeDiagram& eye);

    void show(const SignalFeed& feed);

private:
    VCGLTimeDiagram& m_time;
    std::shared_ptr<AxisLabels> m_timeLabels;
    std::shared_ptr<AxisLabels> m_eyeLabels;
};
