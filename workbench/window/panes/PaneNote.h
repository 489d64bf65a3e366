// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

/// A few words in the middle of a view: what an empty view waits for or, with a veil over the view,
/// why it stands still. Follows the size of the view, and leaves the mouse to it.
class PaneNote : public QLabel
{
    Q_OBJECT
public:
    /// @param captionHeight  of the bar at the view's top, pixels.
    PaneNote(QWidget* view, int captionHeight);

    enum class Veil {
        None,
        Dim,  ///< what the view shows is old
        Whole ///< the view has nothing to show
    };
    /// Sets the text; an empty one hides the note.
    void say(const QString& text, Veil veil = Veil::None);
    /// Paints the note into a picture of the view.
    /// @param size  of the view in the picture.
    void paintPicture(QPainter& painter, const QSize& size) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    QRect roomIn(const QRect& view) const;
    QRect placeIn(const QRect& view) const;
    void paint(QPainter& painter, const QRect& view) const;

    int m_captionHeight;
    Veil m_veil = Veil::None;
};
