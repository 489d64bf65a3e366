// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>
#include <QWidget>

#include <optional>

class QLabel;
class QSlider;

/// Where the signal is: a slider that goes to a place by click, drag and keys, and beside it time
/// and length. Only the time where the signal has no known end.
class SeekBar : public QWidget
{
    Q_OBJECT
public:
    explicit SeekBar(QWidget* parent = nullptr);

    /// @param length  s; none where the signal has no known end.
    void setLength(std::optional<double> length);
    /// Shows a time, s; not while the user drags.
    void setTime(double seconds);
    /// What an arrow key goes: a second, in short signals a hundredth of them.
    double step() const;

signals:
    /// The user wants to go there; while dragging not more often than a view can follow.
    void seekWanted(double seconds);

private:
    void showTime(double seconds);
    double chosenTime() const;

    QSlider* m_slider;
    QLabel* m_text;
    std::optional<double> m_length;
    QTimer m_dragTimer; // runs for as long as the next place has to wait
};
