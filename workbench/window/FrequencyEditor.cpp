// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/FrequencyEditor.h"

#include "workbench/window/Units.h"

#include <cmath>

namespace {

constexpr double fineSteps = 100.0; // of one, below

} // namespace

FrequencyEditor::FrequencyEditor(const QString& unit, QWidget* parent)
    : QDoubleSpinBox(parent)
    , m_unit(unit)
{
    setDecimals(3);
    setKeyboardTracking(false);
}

QString FrequencyEditor::textFromValue(double value) const
{
    return units::exactRate(value, m_unit);
}

double FrequencyEditor::valueFromText(const QString& text) const
{
    return text == specialValueText() ? minimum()
                                      : units::parsedRate(text, m_unit).value_or(value());
}

QValidator::State FrequencyEditor::validate(QString& text, int&) const
{
    if (!text.isEmpty() && text == specialValueText())
        return QValidator::Acceptable;
    const auto rate = units::parsedRate(text, m_unit);
    return rate && *rate >= minimum() && *rate <= maximum() ? QValidator::Acceptable
                                                            : QValidator::Intermediate;
}

void FrequencyEditor::stepBy(int steps)
{
    setStepType(std::abs(value()) < fineSteps ? DefaultStepType : AdaptiveDecimalStepType);
    QDoubleSpinBox::stepBy(steps);
}

QDoubleSpinBox::StepEnabled FrequencyEditor::stepEnabled() const
{
    return hasName() ? StepNone : QDoubleSpinBox::stepEnabled();
}

bool FrequencyEditor::hasName() const
{
    return value() == minimum() && !specialValueText().isEmpty();
}
