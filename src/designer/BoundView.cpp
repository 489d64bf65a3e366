// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "designer/BoundView.h"

#include "platform/values/Binding.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QVBoxLayout>

#include <algorithm>

BoundView::BoundView(QWidget* parent)
    : QWidget(parent)
{}

BoundView::~BoundView() = default;

void BoundView::hold(QWidget* view)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    setMinimumSize(200, 150);
}

QString BoundView::path(Role role) const
{
    return m_bindings[role] ? m_bindings[role]->path() : QString();
}

void BoundView::setPath(Role role, const QString& path)
{
    m_bindings[role].reset();
    if (path.isEmpty())
        bindPath(role, path);
    else
        m_bindings[role] = std::make_unique<values::Binding>(
            *this, [this, role](const QString& each) { return bindPath(role, each); }, path);
}

bool BoundView::isBound() const
{
    return std::all_of(m_bindings.begin(), m_bindings.end(),
                       [](const auto& binding) { return !binding || binding->isBound(); });
}

TimeView::TimeView(QWidget* parent)
    : BoundView(parent)
    , m_view(new VCGLTimeDiagram(this))
{
    hold(m_view);
}

bool TimeView::bindPath(Role role, const QString& path)
{
    static constexpr std::array<bool (VCGLTimeDiagram::*)(const QString&), RoleCount> setters{
        &VCGLTimeDiagram::SetData1_ValuePath,
        nullptr,
        &VCGLTimeDiagram::SetBaudrateData_ValuePath,
        &VCGLTimeDiagram::SetBaudrate_ValuePath,
        &VCGLTimeDiagram::SetXAxisMin_ValuePath,
        &VCGLTimeDiagram::SetXAxisMax_ValuePath,
        &VCGLTimeDiagram::SetYAxisMin_ValuePath,
        &VCGLTimeDiagram::SetYAxisMax_ValuePath,
        &VCGLTimeDiagram::SetHasChangedTrigger_ValuePath};
    return setters[role] && (m_view->*setters[role])(path);
}

EyeView::EyeView(QWidget* parent)
    : BoundView(parent)
    , m_view(new VCGLEyeDiagram(this))
{
    hold(m_view);
}

bool EyeView::bindPath(Role role, const QString& path)
{
    static constexpr std::array<bool (VCGLEyeDiagram::*)(const QString&), RoleCount> setters{
        &VCGLEyeDiagram::SetData1_ValuePath,
        nullptr,
        &VCGLEyeDiagram::SetBaudrateData_ValuePath,
        &VCGLEyeDiagram::SetBaudrate_ValuePath,
        &VCGLEyeDiagram::SetXAxisMin_ValuePath,
        &VCGLEyeDiagram::SetXAxisMax_ValuePath,
        &VCGLEyeDiagram::SetYAxisMin_ValuePath,
        &VCGLEyeDiagram::SetYAxisMax_ValuePath,
        &VCGLEyeDiagram::SetHasChangedTrigger_ValuePath};
    return setters[role] && (m_view->*setters[role])(path);
}

IqView::IqView(QWidget* parent)
    : BoundView(parent)
    , m_view(new VCGLIQDiagram(this))
{
    hold(m_view);
}

bool IqView::bindPath(Role role, const QString& path)
{
    static constexpr std::array<bool (VCGLIQDiagram::*)(const QString&), RoleCount> setters{
        &VCGLIQDiagram::SetData1_ValuePath,
        &VCGLIQDiagram::SetData2_ValuePath,
        nullptr,
        nullptr,
        &VCGLIQDiagram::SetXAxisMin_ValuePath,
        &VCGLIQDiagram::SetXAxisMax_ValuePath,
        &VCGLIQDiagram::SetYAxisMin_ValuePath,
        &VCGLIQDiagram::SetYAxisMax_ValuePath,
        &VCGLIQDiagram::SetHasChangedTrigger_ValuePath};
    return setters[role] && (m_view->*setters[role])(path);
}
