// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TimeValues.h"

#include "workbench/feed/TreeValues.h"

#include <algorithm>
#include <cmath>

using treevalues::assign;
using treevalues::assignChanges;
using treevalues::create;

TimeValues::TimeValues()
    : m_samples(create<List>(samplesPath))
    , m_markers(create<List>(markersPath))
    , m_trigger(create<values::Value<bool>>(triggerPath))
    , m_xMin(create<Number>(xMinPath))
    , m_xMax(create<Number>(xMaxPath))
    , m_yMin(create<Number>(yMinPath))
    , m_yMax(create<Number>(yMaxPath))
    , m_baudrate(create<Number>(baudratePath))
{
    setX(-1.0, 0.0);
    setY(-1.0, 1.0);
    setBaudrate(1.0);
}

TimeValues::~TimeValues()
{
    for (const char* path : {triggerPath, samplesPath, markersPath, xMinPath, xMaxPath, yMinPath,
                             yMaxPath, baudratePath})
        values::Tree::Instance().Remove(path);
}

void TimeValues::setX(double minimum, double maximum)
{
    m_xMin->SetValue(minimum);
    m_xMax->SetValue(maximum);
}

void TimeValues::setY(double minimum, double maximum)
{
    m_yMin->SetValue(minimum);
    m_yMax->SetValue(maximum);
}

void TimeValues::setBaudrate(double samplesPerUnit) { m_baudrate->SetValue(samplesPerUnit); }

void TimeValues::notify(std::vector<double>& samples, const std::vector<double>& markers)
{
    bridge(samples);
    assign(m_samples->GetList(), m_spareSamples, samples);
    assignChanges(m_markers->GetList(), m_spareMarkers, m_written, markers);
    m_trigger->SetValue(true);
}

void TimeValues::bridge(std::vector<double>& samples)
{
    const auto isFinite = [](double sample) { return std::isfinite(sample); };
    const auto first = std::find_if(samples.begin(), samples.end(), isFinite);
    if (first != samples.end() &&
        first != samples.begin()) // no value before it: repeat the first one
        m_level = *first;
    for (double& sample : samples) {
        if (isFinite(sample))
            m_level = sample;
        else
            sample = m_level;
    }
}
