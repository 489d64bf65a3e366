// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

/// A few words over a view, below its caption bar: in the middle while it is empty, else in the
/// corner. Keeps its place when the view changes its size, and leaves the mouse to the view.
class PaneNote : public QLabel
{
    Q_OBJECT
public:
    enum class Place { Middle, Corner };

    /// @param captionHeight  of the bar at the view's top, pixels.
    PaneNote(QWidget* view, int captionHeight, Place place);

    /// An empty text hides it.
    void say(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();

    int m_captionHeight;
    Place m_place;
};
