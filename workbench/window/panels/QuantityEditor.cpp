// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/QuantityEditor.h"

#include "workbench/player/Units.h"
#include "workbench/window/panels/RefusedInput.h"

#include <QLineEdit>

#include <algorithm>
#include <cmath>

QuantityEditor::QuantityEditor(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    setKeyboardTracking(false);
    connect(lineEdit(), &QLineEdit::textChanged, this, [this](QString text) {
        int position = 0;
        refusedInput::mark(*this, validate(text, position) != QValidator::Acceptable);
    });
}

double QuantityEditor::valueFromText(const QString& text) const
{
    return text == specialValueText() ? minimum() : parse(text).value_or(value());
}

QValidator::State QuantityEditor::validate(QString& text, int&) const
{
    if (!text.isEmpty() && text == specialValueText())
        return QValidator::Acceptable;
    const auto typed = parse(text);
    return typed && *typed >= minimum() && *typed <= maximum() ? QValidator::Acceptable
                                                               : QValidator::Intermediate;
}

void QuantityEditor::fixup(QString& text) const
{
    refusedInput::say(*this, tr("\"%1\" cannot be used; give %2 to %3")
                                 .arg(text.simplified(), format(minimum()), format(maximum())));
}

void QuantityEditor::stepBy(int steps)
{
    const double shown = std::abs(value() / stepUnit());
    const double below = steps < 0 ? std::nextafter(shown, 0.0) : shown; // so that 100 follows 99
    const double step =
        shown > 0.0 ? std::pow(10.0, std::floor(std::log10(below * (1.0 + 1e-12))) - 1.0) : 0.0;
    setValue(value() + steps * std::max(step, leastStep()) * stepUnit());
    selectAll();
}

QDoubleSpinBox::StepEnabled QuantityEditor::stepEnabled() const
{
    return hasName() ? StepNone : QDoubleSpinBox::stepEnabled();
}

bool QuantityEditor::hasName() const
{
    return value() == minimum() && !specialValueText().isEmpty();
}

FrequencyEditor::FrequencyEditor(const QString& unit, QWidget* parent)
    : QuantityEditor(parent)
    , m_unit(unit)
{
    setDecimals(3);
}

QString FrequencyEditor::format(double value) const { return units::exactRate(value, m_unit); }

std::optional<double> FrequencyEditor::parse(const QString& text) const
{
    return units::parsedRate(text, m_unit);
}

TimeEditor::TimeEditor(int digits, QWidget* parent)
    : QuantityEditor(parent)
    , m_digits(digits)
{
    constexpr int decimals = 15; // of a second: a thousandth of the shortest sample
    setDecimals(decimals);
}

void TimeEditor::setUnit(const QString& sign, double seconds, std::optional<double> symbol)
{
    m_sign = sign;
    m_seconds = seconds;
    m_symbol = symbol;
}

QString TimeEditor::format(double value) const
{
    const double shown = value / m_seconds;
    const bool isLong = std::abs(shown) >= std::pow(10.0, m_digits); // exponents are hard to read
    return (isLong ? QString::number(shown, 'f', 0) : QString::number(shown, 'g', m_digits)) +
           QChar(0x2009) + m_sign;
}

std::optional<double> TimeEditor::parse(const QString& text) const
{
    return units::parsedTime(text, m_seconds, m_symbol);
}
