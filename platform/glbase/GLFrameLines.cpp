// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Lines of a frame, drawn through the painter of the child that is being painted.
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"

void GLFrameWidget::DrawLines(const GLLines& lines)
{
    GLPainter handle(this);
    if (!handle.painter())
        return;
    DeviceRaster raster(*handle.painter(), handle.area());
    for (const QLineF& line : lines.Lines())
        raster.AddLine(line, lines.LineStyle());
    raster.Fill(lines.LineStyle().Color());
}

void GLFrameWidget::DrawStepLine(const GLStepLine& line)
{
    GLPainter handle(this);
    if (!handle.painter())
        return;
    DeviceRaster raster(*handle.painter(), handle.area());
    raster.AddStepLine(line);
    raster.Fill(line.LineStyle().Color());
}
