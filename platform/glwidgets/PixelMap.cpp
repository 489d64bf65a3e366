// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/PixelMap.h"

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

namespace values {

namespace {

/// Lines of one logical pixel at the grid positions of an axis.
class GridDrawer : public IGLDrawObject
{
public:
    explicit GridDrawer(const axisDefinition& axis)
        : m_axis(axis)
    {}

    bool IsEnabled() override { return true; }
    void Draw(GLPainter& painter, GLBaseWidget* widget, int) override
    {
        const QColor color = ColorSet::Instance()[IColorBase::colGrid];
        const QRect area = widget->rect();
        for (const int position : m_axis.GetGridPos()) {
            if (m_axis.GetOrientation() == axisDefinition::Orientation::Horizontal) {
                if (position >= area.left() && position <= area.right())
                    painter.drawVLine(position, area.top(), area.bottom(), color);
            } else if (position >= area.top() && position <= area.bottom()) {
                painter.drawHLine(area.left(), area.right(), position, color);
            }
        }
    }
    const QString& GetDescription() override { return m_description; }
    void SetDescription(const QString& description) override { m_description = description; }

private:
    const axisDefinition& m_axis;
    QString m_description = QStringLiteral("Grid lines");
};

} // namespace

PixelMap::PixelMap(axisDefinition::Orientation orientation)
    : m_axis(orientation)
    , m_gridDrawer(std::make_unique<GridDrawer>(m_axis))
{}

PixelMap::~PixelMap() = default;

} // namespace values
