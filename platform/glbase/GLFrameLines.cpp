// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Lines of a frame, drawn through the painter of the child that is being painted.
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/PixelTarget.h"

#include <QPainter>

PixelTarget* GLFrameWidget::PixelsFor(const QColor& color) const
{
    constexpr int opaque = 255;
    const bool isPlain = color.alpha() == opaque && m_pPainter && m_pPainter->opacity() == 1.0 &&
                         m_pPainter->compositionMode() == QPainter::CompositionMode_SourceOver;
    return isPlain ? m_pixels.get() : nullptr;
}

template<class Add>
void GLFrameWidget::Draw(const QColor& color, const Add& add)
{
    const auto fill = [&](DeviceRaster&& raster) {
        add(raster);
        raster.Fill(color);
    };
    if (PixelTarget* pixels = PixelsFor(color)) {
        PaintGround();
        const QRect place = CurrentPlace();
        fill(DeviceRaster(*pixels, place.topLeft(), QRect(QPoint(0, 0), place.size())));
        return;
    }
    GLPainter handle(this);
    if (handle.qtPainter())
        fill(DeviceRaster(*handle.qtPainter(), handle.area()));
}

void GLFrameWidget::DrawLines(const GLLines& lines)
{
    Draw(lines.LineStyle().Color(), [&lines](DeviceRaster& raster) {
        for (const QLineF& line : lines.Lines())
            raster.AddLine(line, lines.LineStyle());
    });
}

void GLFrameWidget::DrawStepLine(const GLStepLine& line)
{
    Draw(line.LineStyle().Color(), [&line](DeviceRaster& raster) { raster.AddStepLine(line); });
}
