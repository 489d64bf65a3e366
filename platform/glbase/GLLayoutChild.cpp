// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// A GL widget as the child of a layout: its frame, and painting what the widget carries.
#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"

GLBaseWidget::GLBaseWidget(const std::string& name, GLLayout* layout)
    : m_pFrame(layout)
{
    setObjectName(QString::fromStdString(name));
}

void GLBaseWidget::paintEvent(QPaintEvent*)
{
    // On the screen Qt paints it.
    if (!m_pQWidget || !m_pFrame || !m_pFrame->IsPaintingPicture())
        return;
    GLPainter painter(m_pFrame);
    PaintCarried(*painter.qtPainter(), rect().size());
}
