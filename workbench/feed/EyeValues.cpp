// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeValues.h"

#include "workbench/feed/TreeValues.h"

using treevalues::assign;
using treevalues::assignChanges;
using treevalues::create;

EyeValues::EyeValues()
    : m_samples(create<List>(samplesPath))
    , m_markers(create<List>(markersPath))
    , m_trigger(create<values::Value<bool>>(triggerPath))
    , m_yMin(create<Number>(yMinPath))
    , m_yMax(create<Number>(yMaxPath))
{
    setY(-1.0, 1.0);
}

EyeValues::~EyeValues()
{
    for (const char* path : {triggerPath, samplesPath, markersPath, yMinPath, yMaxPath})
        values::Tree::Instance().Remove(path);
}

void EyeValues::setY(double minimum, double maximum)
{
    m_yMin->SetValue(minimum);
    m_yMax->SetValue(maximum);
}

void EyeValues::notify(const std::vector<double>& samples, const std::vector<double>& markers)
{
    assign(m_samples->GetList(), m_spareSamples, samples);
    assignChanges(m_markers->GetList(), m_spareMarkers, m_written, markers);
    m_trigger->SetValue(true);
}
