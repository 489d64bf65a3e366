// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDoubleSpinBox>

#include <optional>

/// Editor of a quantity that is shown and typed with prefix and unit. A text that is no quantity
/// within the range is red while it is typed; when the editor loses the focus, the last value comes
/// back, and a tip tells what can be typed. A lowest value with a name of its own can only be typed
/// over.
class QuantityEditor : public QDoubleSpinBox
{
    Q_OBJECT
public:
    QString textFromValue(double value) const override { return format(value); }
    double valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;
    void fixup(QString& text) const override;
    /// A power of ten below the value, but no less than the least step.
    void stepBy(int steps) override;

protected:
    explicit QuantityEditor(QWidget* parent);

    virtual QString format(double value) const = 0;
    virtual std::optional<double> parse(const QString& text) const = 0;
    /// Unit in which a value is stepped, and the smallest step.
    virtual double stepUnit() const { return 1.0; }
    virtual double leastStep() const { return 1.0; }
    StepEnabled stepEnabled() const override;

private:
    bool hasName() const;
};

/// Editor of a frequency or rate: "19.2 kBd". Takes "19.2k", "19,2 kBd", "19200" and "1.92e4".
class FrequencyEditor : public QuantityEditor
{
    Q_OBJECT
public:
    /// @param unit  Hz or Bd, which may be typed after a value.
    FrequencyEditor(const QString& unit, QWidget* parent);

protected:
    QString format(double value) const override;
    std::optional<double> parse(const QString& text) const override;

private:
    QString m_unit;
};

/// Editor of a time, s: "66.7 ms", or "400 T" when it counts symbols. Takes "5ms", "0,1 s" and, if
/// the symbol period is known, "400 T"; a number alone has the unit that is shown.
class TimeEditor : public QuantityEditor
{
    Q_OBJECT
public:
    /// @param digits  that are shown.
    TimeEditor(int digits, QWidget* parent);

    /// @param sign     of the unit that is shown.
    /// @param seconds  of that unit.
    /// @param symbol   s, of the symbol period, if known.
    void setUnit(const QString& sign, double seconds, std::optional<double> symbol);

protected:
    QString format(double value) const override;
    std::optional<double> parse(const QString& text) const override;
    double stepUnit() const override { return m_seconds; }
    double leastStep() const override { return 1e-3; }

private:
    int m_digits;
    QString m_sign = QStringLiteral("s");
    double m_seconds = 1.0;
    std::optional<double> m_symbol;
};
