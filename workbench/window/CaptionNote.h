// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class CaptionWidget;
class QPainter;

/// A few words in a view's caption bar on what it shows, where that is not plain. They leave their
/// room to the bar's title, and to its read-out while there is one.
class CaptionNote : public QWidget
{
    Q_OBJECT
public:
    explicit CaptionNote(CaptionWidget& bar);

    void say(const QString& text);
    const QString& text() const { return m_text; }
    /// Paints it into a picture of the bar, in its place there.
    /// @param width  of the bar in the picture.
    void paintPicture(QPainter& painter, int width) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void tellWhole();
    QRect freeRoom(const QRect& place) const;
    void paint(QPainter& painter, const QRect& place) const;

    CaptionWidget& m_bar;
    QString m_text;
};
