// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/GLBackground.h"

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QBrush>
#include <QPen>

namespace {

const QColor& color(int number)
{
    return ColorSet::Instance()[static_cast<IColorBase::ECOLOR>(number)];
}

} // namespace

GLBackground::GLBackground()
    : m_description(QStringLiteral("Default background implementation"))
{}

GLBackground::~GLBackground() = default;

bool GLBackground::IsEnabled() { return true; }

void GLBackground::Draw(GLPainter& painter, GLBaseWidget* widget, int)
{
    const QRect rect = widget->rect();
    if (!m_gradient) {
        painter.fillRect(rect, QBrush(color(m_color2), Qt::SolidPattern));
        return;
    }
    const QColor& from = color(m_inverted ? m_color2 : m_color1);
    const QColor& to = color(m_inverted ? m_color1 : m_color2);
    painter.save();
    if (m_horizontal)
        painter.setHGradientBrush(from, to);
    else
        painter.setVGradientBrush(from, to);
    painter.setPen(QPen(Qt::NoPen));
    painter.drawRect(rect);
    painter.restore();
}

const QString& GLBackground::GetDescription() { return m_description; }

void GLBackground::SetDescription(const QString& description) { m_description = description; }
