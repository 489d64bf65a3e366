// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDoubleSpinBox>

/// Editor of a frequency or rate, with the prefix that fits: "19.2 kBd". Takes "19.2k", "19,2 kBd",
/// "19200" and "1.92e4". What is the lowest value and has a name of its own can only be typed over.
class FrequencyEditor : public QDoubleSpinBox
{
    Q_OBJECT
public:
    /// @param unit  Hz or Bd, with which a value can be typed, too.
    FrequencyEditor(const QString& unit, QWidget* parent);

    QString textFromValue(double value) const override;
    double valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;
    /// A power of ten below the value, but no less than 1.
    void stepBy(int steps) override;

protected:
    StepEnabled stepEnabled() const override;

private:
    bool hasName() const;

    QString m_unit;
};
