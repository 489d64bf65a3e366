// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStatusBar>

#include <cstdint>
#include <optional>

class QLabel;

/// Status bar: source, sample rate, position, frame rate, drops. Fields of numbers are as wide as
/// their longest usual text, so that they do not move.
class StatusFields : public QStatusBar
{
    Q_OBJECT
public:
    explicit StatusFields(QWidget* parent);

    /// @param length  s; none for a signal without end.
    void setSource(const QString& name, double sampleRate, std::optional<double> length);
    void setPosition(double seconds);
    /// Pictures a second; none where none are shown.
    void setFrameRate(std::optional<double> rate);
    void setDropCount(std::int64_t count);

private:
    QLabel* addField(const QString& longest, const QString& toolTip);

    QLabel* m_source;
    QLabel* m_sampleRate;
    QLabel* m_position;
    QLabel* m_frameRate;
    QLabel* m_drops;
    std::optional<double> m_length; // s, of the signal
};
