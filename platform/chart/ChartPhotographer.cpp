// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Takes the picture of a scene.
#include "platform/base/Saturate.h"
#include "platform/chart/CChartDisplay.h"
#include "platform/chart/CGraphicEngineSwitch.h"
#include "platform/chart/ChartPicture.h"
#include "platform/glbase/AxisLabelBoxes.h"
#include "platform/glbase/axisDefinition.h"

#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace OndoChartDisplay;

namespace {

constexpr QRgb opaque = 0xff000000U;

class Photographer
{
public:
    Photographer(const ChartPicture::Finder& find, const std::vector<const CBaseObject*>& drawn,
                 std::vector<ChartPicture::Item>& items)
        : m_find(find)
        , m_drawn(drawn)
        , m_items(items)
    {}

    void Take()
    {
        for (const CBaseObject* object : m_drawn) {
            if (const auto* rectangle = dynamic_cast<const CRectangle*>(object))
                Take(*rectangle);
            else if (const auto* grid = dynamic_cast<const CGridCartesian*>(object))
                Take(*grid);
            else if (const auto* label = dynamic_cast<const CAxisLabel*>(object))
                Take(*label);
            else if (const auto* curve = dynamic_cast<const CCurveCartesian*>(object))
                Take(*curve);
        }
    }

private:
    struct Area
    {
        QRect rect;
        ChartAxis axes[2];
    };
    struct Lines
    {
        QRect rect;
        ChartAxis axis;
        axisDefinition definition;
        std::vector<axisDefinition::Tick> ticks;
    };

    template<class T>
    CSmartPtr<T> Find(const std::string& name) const
    {
        return CSmartPtr<T>(m_find(name));
    }

    bool IsOurs(const std::string& layerName) const
    {
        const auto layer = Find<CLayerDescription>(layerName);
        return layer &&
               layer->m_rendererId == OndoChartDisplayComfort::CGraphicEngineSwitch::RENDERER_ID;
    }

    std::optional<Area> FindArea(const std::string& coordinateSystem) const
    {
        const auto system = Find<CCoordinateSystemCartesian>(coordinateSystem);
        if (!system)
            return {};
        const auto diagram = Find<CDiagramArea>(system->m_diagramArea);
        if (!diagram)
            return {};
        const auto cell = Find<CLayoutCell>(diagram->m_layoutCell);
        const auto x = Find<CScale>(system->m_scales[0]);
        const auto y = Find<CScale>(system->m_scales[1]);
        if (!cell || !x || !y)
            return {};
        const QRect rect = cell->m_geometry;
        return Area{rect,
                    {{x->GetStart(), x->GetStop(), rect.left(), rect.width(), false},
                     {y->GetStart(), y->GetStop(), rect.top(), rect.height(), true}}};
    }

    /// The lines of a grid that lie in its cell.
    std::optional<Lines> FindLines(const CGridCartesian& grid) const
    {
        const std::optional<Area> area = FindArea(grid.m_coordinateSystem);
        if (!area || (grid.m_dimension != 0 && grid.m_dimension != 1))
            return {};
        const ChartAxis& axis = area->axes[grid.m_dimension];
        if (!axis.IsUsable())
            return {};
        Lines lines{area->rect,
                    axis,
                    axisDefinition(axis.vertical ? axisDefinition::Orientation::Vertical
                                                 : axisDefinition::Orientation::Horizontal),
                    {}};
        lines.definition.SetRange(axis.start, axis.stop);
        lines.definition.SetLength(axis.length);
        lines.definition.SetTickLimit(grid.m_count);
        const auto add = [&lines](double value) {
            const int pixel = lines.axis.Pixel(value);
            if (std::isfinite(value) && pixel >= lines.axis.first &&
                pixel < lines.axis.first + lines.axis.length)
                lines.ticks.push_back({value, pixel});
        };
        if (grid.m_mode == CGridCartesian::linear) {
            for (const axisDefinition::Tick& tick : lines.definition.GetTicks())
                add(tick.value);
        } else if (grid.m_mode == CGridCartesian::userDefined) {
            if (const auto values = Find<CDataArrayD>(grid.m_userLines)) {
                for (const double value : values->Values())
                    add(value);
            }
        }
        return lines;
    }

    void Take(const CRectangle& rectangle)
    {
        const auto cell = Find<CLayoutCell>(rectangle.m_layoutCell);
        const auto style = Find<CStyleResource>(rectangle.m_style);
        if (!IsOurs(rectangle.m_layer) || !cell || !style ||
            style->m_fillStyle == CStyleResource::noFill)
            return;
        const QRgb first = style->m_firstColor.Rgba();
        const bool gradient = style->m_fillStyle == CStyleResource::gradientFill;
        m_items.emplace_back(ChartPicture::Fill{cell->m_geometry, first,
                                                gradient ? style->m_secondColor.Rgba() : first});
    }

    void Take(const CGridCartesian& grid)
    {
        const auto style = Find<CStyleResource>(grid.m_lineStyles[0]);
        if (!IsOurs(grid.m_layer) || !style || style->m_lineStyle == CStyleResource::noLine)
            return;
        const std::optional<Lines> lines = FindLines(grid);
        if (!lines)
            return;
        const int width = LineWidth(*style);
        const QRgb color = style->m_firstColor.Rgba();
        for (const axisDefinition::Tick& tick : lines->ticks) {
            const int from = tick.pixel - (width - 1) / 2;
            const QRect line = lines->axis.vertical
                                   ? QRect(lines->rect.left(), from, lines->rect.width(), width)
                                   : QRect(from, lines->rect.top(), width, lines->rect.height());
            m_items.emplace_back(ChartPicture::Fill{line.intersected(lines->rect), color, color});
        }
    }

    void Take(const CAxisLabel& label)
    {
        const auto cell = Find<CLayoutCell>(label.m_layoutCell);
        if (!IsOurs(label.m_layer) || !cell)
            return;
        for (const CBaseObject* object : m_drawn) {
            const auto* grid = dynamic_cast<const CGridCartesian*>(object);
            if (!grid || m_find(grid->m_axisLabel) != &label)
                continue;
            const std::optional<Lines> lines = FindLines(*grid);
            if (!lines || !lines->axis.vertical)
                continue;
            for (int i = 0; i < 2; ++i) {
                if (label.m_positions[i].on)
                    TakeLabels(label.m_positions[i], *lines, cell->m_geometry, i == 1);
            }
        }
    }

    void TakeLabels(const CAxisLabel::Position& position, const Lines& lines, const QRect& cell,
                    bool atRight)
    {
        const auto style = Find<CStyleResource>(position.style);
        if (!style)
            return;
        const QFont font = TextFont(position.font);
        const QRgb textColor = style->m_firstColor.Rgba();
        QColor ground = QColor::fromRgba(style->m_secondColor.Rgba());
        ground.setAlpha(ground.alpha() * AxisLabelBox::groundAlpha / 255);
        for (const AxisLabelBox& label :
             axisLabelBoxes(lines.definition, lines.ticks, font, cell, atRight)) {
            m_items.emplace_back(ChartPicture::Fill{label.mark, textColor, textColor});
            if (label.box.isEmpty())
                continue;
            if (style->m_fillStyle != CStyleResource::noFill)
                m_items.emplace_back(ChartPicture::Fill{label.box, ground.rgba(), ground.rgba()});
            m_items.emplace_back(ChartPicture::Text{label.box, label.text, font, textColor});
        }
    }

    void Take(const CCurveCartesian& curve)
    {
        const auto style = Find<CStyleResource>(curve.m_lineStyle);
        const auto xData = Find<CDataArrayD>(curve.m_data[0]);
        const auto yData = Find<CDataArrayD>(curve.m_data[1]);
        const std::optional<Area> area = FindArea(curve.m_coordinateSystem);
        if (!IsOurs(curve.m_layer) || !curve.m_on || !style || !xData || !yData || !area ||
            style->m_lineStyle == CStyleResource::noLine || !area->axes[0].IsUsable() ||
            !area->axes[1].IsUsable())
            return;
        m_items.emplace_back(ChartPicture::Curve{area->axes[0], area->axes[1], area->rect,
                                                 style->m_firstColor.Rgba() | opaque,
                                                 LineWidth(*style), xData.Shared(), yData.Shared(),
                                                 xData->GetState(), yData->GetState()});
    }

    static int LineWidth(const CStyleResource& style)
    {
        constexpr int widest = 100;
        return truncateSaturated<int>(style.m_lineWidth.Value() + 0.5, 1, widest);
    }

    QFont TextFont(const std::string& name) const
    {
        QFont font = QGuiApplication::font();
        if (const auto resource = Find<CFontResource>(name)) {
            font.setFamily(QString::fromStdWString(resource->m_family));
            constexpr double largest = 1000.0;
            const double size = resource->m_size.Value();
            if (size > 0.0)
                font.setPointSizeF(std::min(size, largest));
        }
        return font;
    }

    const ChartPicture::Finder& m_find;
    const std::vector<const CBaseObject*>& m_drawn;
    std::vector<ChartPicture::Item>& m_items;
};

} // namespace

void ChartPicture::Take(const Finder& find, const std::vector<const CBaseObject*>& drawn)
{
    m_items.clear();
    Photographer(find, drawn, m_items).Take();
}
