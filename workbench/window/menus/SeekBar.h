// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>
#include <QWidget>

#include <optional>

class QLabel;
class QSlider;

/// The position in the signal: a slider that seeks by click, drag and keys, and beside it time and
/// length. Only the time when the signal has no known end.
class SeekBar : public QWidget
{
    Q_OBJECT
public:
    explicit SeekBar(QWidget* parent = nullptr);

    /// @param length  s; none where the signal has no known end.
    void setLength(std::optional<double> length);
    /// Shows a time, s, unless the user is dragging.
    void setTime(double seconds);
    /// Step of an arrow key: a second, or a hundredth of a short signal.
    double step() const;

signals:
    /// The user seeks to a time; while dragging, not more often than the views can follow.
    void seekWanted(double seconds);

private:
    void showTime(double seconds);
    double chosenTime() const;

    QSlider* m_slider;
    QLabel* m_text;
    std::optional<double> m_length;
    QTimer m_dragTimer; // runs while the next position has to wait
};
