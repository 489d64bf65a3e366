// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCDensityPlot.h"

#include <algorithm>

VCDensityPlot::VCDensityPlot(Kind kind, const density::Counter::Settings& settings, QWidget* parent)
    : DensityPlot(kind, settings, parent)
    , m_isEye(kind == Kind::Eye)
    , m_hasChangedTrigger(this)
{}

VCDensityPlot::~VCDensityPlot() = default;

bool VCDensityPlot::SetData1_ValuePath(const QString& path) { return m_data1.SetPath(path); }

bool VCDensityPlot::SetData2_ValuePath(const QString& path) { return m_data2.SetPath(path); }

bool VCDensityPlot::SetBaudrateData_ValuePath(const QString& path)
{
    return m_baudrateData.SetPath(path);
}

bool VCDensityPlot::SetHasChangedTrigger_ValuePath(const QString& path)
{
    m_hasChangedTrigger.SetPath(path);
    m_hasChangedTrigger.NotifyOwner();
    return m_hasChangedTrigger.Get() != nullptr;
}

void VCDensityPlot::Update(Observable* source, TChangeCode code)
{
    if (code != ccContent || !m_hasChangedTrigger.IsFrom(source) || isPaused())
        return;
    if (m_isEye)
        feedTraces();
    else
        feedPoints();
}

void VCDensityPlot::feedTraces()
{
    if (!m_data1.Get() || !m_baudrateData.Get())
        return;
    const std::list<double>& markers = m_baudrateData.Get()->GetList();
    auto marker = markers.begin();
    for (const double sample : m_data1.Get()->GetList()) {
        const double length = marker != markers.end() ? *marker++ : 0.0;
        if (length != 0.0) {
            endTrace();
            // What is no length is not that of the plot's shape either.
            constexpr double most = density::TraceShape::mostSamples + 1.0;
            m_traceLength = length >= 1.0 ? static_cast<std::size_t>(std::min(length, most)) : 1;
        }
        if (m_traceLength > 0)
            m_pending.push_back(sample);
        if (m_traceLength > 0 && m_pending.size() >= m_traceLength)
            endTrace();
    }
    handOver();
}

void VCDensityPlot::endTrace()
{
    if (m_pending.size() == sampleCount()) {
        m_whole.insert(m_whole.end(), m_pending.begin(), m_pending.end());
    } else if (m_traceLength > 0) {
        handOver();
        addTorn(1);
        ++m_nextSymbol;
    }
    m_pending.clear();
    m_traceLength = 0;
}

// The whole traces, whose symbols follow one another.
void VCDensityPlot::handOver()
{
    addData(m_whole.data(), m_whole.size(), m_nextSymbol);
    m_nextSymbol += static_cast<std::int64_t>(m_whole.size() / sampleCount());
    m_whole.clear();
}

void VCDensityPlot::feedPoints()
{
    if (!m_data1.Get() || !m_data2.Get())
        return;
    const std::list<double>& q = m_data2.Get()->GetList();
    auto other = q.begin();
    std::vector<double> points;
    for (const double i : m_data1.Get()->GetList()) {
        if (other == q.end())
            break;
        points.insert(points.end(), {i, *other++});
    }
    addData(points.data(), points.size(), m_nextSymbol);
    m_nextSymbol += static_cast<std::int64_t>(points.size() / 2);
}
