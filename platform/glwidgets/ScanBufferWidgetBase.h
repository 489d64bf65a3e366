// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLCommonWidget.h"
#include "platform/glwidgets/TextRectangles.h"

#include <QPoint>
#include <QStringList>

#include <memory>

/// Base of the GL plots: text rectangles, named markers and lines of text over the picture.
class ORVANE_PLATFORM_API ScanBufferWidgetBase : public GLCommonWidget
{
    Q_OBJECT
public:
    /// @param name    object name; copied.
    /// @param layout  the layout that the widget will be added to; may be null.
    ScanBufferWidgetBase(const char* name, GLLayout* layout, GLCommonWidget::EWindowType type);
    ~ScanBufferWidgetBase() override;

    /// The texts over this plot; never null.
    std::shared_ptr<TextRectangles> TextRects() const;

    /// Puts a text at a point of the plot, in its pixel frame, under a name.
    virtual void AddMarker(const QString& name, const QString& text, const QPoint& position);
    virtual void RemoveMarker(const QString& name);
    /// A click (press and release without a drag) in the plot that no mouse object took.
    virtual void clicked(const QPoint& position);
    /// Rebuilds the text box of the lines added by addTextFreqList, in the top right corner.
    virtual void drawFrequencyList();
    /// Shows or hides the plot; a hidden one keeps no place in the layout.
    virtual void setVisible(bool visible);

    void clear() override;
    void addTextFreqList(const QString& line) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    std::shared_ptr<TextRectangles> m_textRects;
    QStringList m_lines;
    QPoint m_pressedAt;
    bool m_isPressed = false; // by a press that no mouse object took
};
