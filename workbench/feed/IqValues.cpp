// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/IqValues.h"

#include "workbench/feed/TreeValues.h"

using treevalues::assign;
using treevalues::create;

IqValues::IqValues()
    : m_i(create<List>(iPath))
    , m_q(create<List>(qPath))
    , m_trigger(create<values::Value<bool>>(triggerPath))
    , m_xMin(create<Number>(xMinPath))
    , m_xMax(create<Number>(xMaxPath))
    , m_yMin(create<Number>(yMinPath))
    , m_yMax(create<Number>(yMaxPath))
{
    setEnds(1.0, 1.0);
}

IqValues::~IqValues()
{
    for (const char* path : {triggerPath, iPath, qPath, xMinPath, xMaxPath, yMinPath, yMaxPath})
        values::Tree::Instance().Remove(path);
}

void IqValues::setEnds(double xEnd, double yEnd)
{
    m_xMin->SetValue(-xEnd);
    m_xMax->SetValue(xEnd);
    m_yMin->SetValue(-yEnd);
    m_yMax->SetValue(yEnd);
}

void IqValues::notify(const std::vector<double>& i, const std::vector<double>& q)
{
    assign(m_i->GetList(), m_spareI, i);
    assign(m_q->GetList(), m_spareQ, q);
    m_trigger->SetValue(true);
}
