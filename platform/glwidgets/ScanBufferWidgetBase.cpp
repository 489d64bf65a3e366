// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/ScanBufferWidgetBase.h"

#include <QApplication>
#include <QMouseEvent>

#include <limits>

namespace {

const QString listKey = QStringLiteral("list");
const QString markerPrefix = QStringLiteral("marker/");

} // namespace

ScanBufferWidgetBase::ScanBufferWidgetBase(const char* name, GLLayout* layout,
                                           GLCommonWidget::EWindowType)
    : GLCommonWidget(name ? name : "", layout)
    , m_textRects(std::make_shared<TextRectangles>())
{}

ScanBufferWidgetBase::~ScanBufferWidgetBase() = default;

std::shared_ptr<TextRectangles> ScanBufferWidgetBase::TextRects() const { return m_textRects; }

void ScanBufferWidgetBase::AddMarker(const QString& name, const QString& text,
                                     const QPoint& position)
{
    m_textRects->set(markerPrefix + name, text, position);
    update();
}

void ScanBufferWidgetBase::RemoveMarker(const QString& name)
{
    m_textRects->remove(markerPrefix + name);
    update();
}

void ScanBufferWidgetBase::clicked(const QPoint&) {}

void ScanBufferWidgetBase::mousePressEvent(QMouseEvent* event)
{
    GLCommonWidget::mousePressEvent(event);
    m_isPressed = !event->isAccepted() && event->button() == Qt::LeftButton;
    m_pressedAt = event->pos();
}

void ScanBufferWidgetBase::mouseReleaseEvent(QMouseEvent* event)
{
    GLCommonWidget::mouseReleaseEvent(event);
    if (!m_isPressed || event->isAccepted() || event->button() != Qt::LeftButton)
        return;
    m_isPressed = false;
    if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
        clicked(event->pos());
}

void ScanBufferWidgetBase::drawFrequencyList()
{
    // Far to the right: the text moves to the border, whatever the width of the plot.
    constexpr int farRight = std::numeric_limits<int>::max();
    m_textRects->set(listKey, m_lines.join(QLatin1Char('\n')), QPoint(farRight, 0));
}

void ScanBufferWidgetBase::setVisible(bool visible) { ShowInLayout(visible); }

void ScanBufferWidgetBase::clear()
{
    m_lines.clear();
    drawFrequencyList();
    update();
}

void ScanBufferWidgetBase::addTextFreqList(const QString& line)
{
    m_lines << line;
    drawFrequencyList();
    update();
}
