// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"

#include <QStatusBar>

#include <cstdint>
#include <optional>

class QLabel;

/// Status bar: source, sample rate, frame rate, and the part of a live signal that is left out.
/// Fields of numbers are as wide as their longest usual text, so that they do not move.
class StatusFields : public QStatusBar
{
    Q_OBJECT
public:
    explicit StatusFields(QWidget* parent);

    void setSource(const QString& name);
    /// Sample rates of the shown signal and of the source, Hz.
    void setSampleRate(double shown, double source);
    /// Shows the current trouble with it, if there is any, beside its name.
    void setTrouble(const std::optional<Message>& trouble);
    /// Pictures a second; none where none are shown.
    void setFrameRate(std::optional<double> rate);
    /// @param part  of the samples that is left out, 0 to 1; none for a recording.
    /// @param gaps  number of gaps.
    void setLeftOut(std::optional<double> part, std::int64_t gaps);

private:
    class ElidedLabel;

    QLabel* addField(const QString& longest, const QString& toolTip);

    QString m_name;
    ElidedLabel* m_source;
    QLabel* m_sampleRate;
    QLabel* m_frameRate;
    QLabel* m_leftOut;
};
