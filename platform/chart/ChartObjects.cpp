// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/ChartObjects.h"

namespace OndoChartDisplay {

CQuantity::CQuantity(double value, QuantityUnit unit, const char*)
    : m_value(value)
    , m_unit(unit)
{}

CBaseObject::~CBaseObject() = default;

void CScale::SetRange(double start, double stop, int)
{
    m_start = start;
    m_stop = stop;
}

} // namespace OndoChartDisplay
