// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/axisDefinition.h"

#include "platform/base/AxisPixel.h"
#include "platform/base/Saturate.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <utility>

axisDefinition::axisDefinition(Orientation orientation)
    : m_orientation(orientation)
{}

axisDefinition::~axisDefinition() = default;

void axisDefinition::SetRange(double start, double stop)
{
    m_start = start;
    m_stop = stop;
    m_dirty = true;
}

void axisDefinition::SetLength(int pixels)
{
    m_length = pixels;
    m_dirty = true;
}

void axisDefinition::SetTickLimit(int count)
{
    m_tickLimit = std::max(2, std::min(count, MaxTickCount));
    m_dirty = true;
}

bool axisDefinition::IsUsable() const
{
    const double span = m_stop - m_start;
    return std::isfinite(m_start) && std::isfinite(m_stop) && std::isfinite(span) && span != 0.0 &&
           m_length >= 2;
}

int axisDefinition::ValueToPixel(double value) const
{
    const int offset =
        IsUsable() ? truncateToPixel(axisPixel(value, m_start, m_stop, m_length)) : 0;
    return m_orientation == Orientation::Horizontal ? offset : m_length - offset;
}

double axisDefinition::PixelToValue(int pixel) const
{
    if (!IsUsable())
        return m_start;
    const double offset =
        m_orientation == Orientation::Horizontal ? pixel : static_cast<double>(m_length) - pixel;
    const double span = m_stop - m_start;
    double value = m_start + offset * span / (m_length - 1);
    // Rounding may have put the value just before the edge of its pixel.
    const double resolution = std::max(std::abs(m_start), std::abs(m_stop)) * DBL_EPSILON;
    for (int i = 0; i < 4 && ValueToPixel(value) != pixel; ++i)
        value += std::copysign(resolution, offset * span);
    return value;
}

std::vector<int> axisDefinition::GetGridPos() const
{
    std::vector<int> positions;
    for (const Tick& tick : GetTicks())
        positions.push_back(tick.pixel);
    return positions;
}

const std::vector<axisDefinition::Tick>& axisDefinition::GetTicks() const
{
    if (m_dirty)
        Recompute();
    return m_ticks;
}

namespace {

/// A step of 1, 2 or 5 times a power of ten.
struct Step
{
    int factor;
    int exponent;

    /// index * step with a single rounding: powers of ten up to 22 are exact.
    double Times(double index) const
    {
        const double power = std::pow(10.0, std::abs(exponent));
        return exponent < 0 ? index * factor / power : index * factor * power;
    }
};

/// The step whose ratio to the wanted one is closest to 1.
Step NearestStep(double wish)
{
    const int exponent = static_cast<int>(std::floor(std::log10(wish)));
    const double mantissa = wish / std::pow(10.0, exponent);
    // Geometric means of neighbouring factors.
    if (mantissa < std::sqrt(2.0))
        return {1, exponent};
    if (mantissa < std::sqrt(10.0))
        return {2, exponent};
    if (mantissa < std::sqrt(50.0))
        return {5, exponent};
    return {1, exponent + 1};
}

/// Pixels from one grid line to the next that look best along and across lines of text.
constexpr double preferredSpacingHorizontal = 77.0;
constexpr double preferredSpacingVertical = 50.0;

/// Part of a step by which a range may miss a tick at its end through rounding.
constexpr double indexTolerance = 1e-9;

} // namespace

void axisDefinition::Recompute() const
{
    m_dirty = false;
    m_ticks.clear();
    m_plainLabels.clear();
    m_canFormatTicks = m_formatter != nullptr;
    m_canFormatPixels.reset();
    if (!IsUsable())
        return;

    const double span = m_stop - m_start;
    const double spacing =
        std::max(m_orientation == Orientation::Horizontal ? preferredSpacingHorizontal
                                                          : preferredSpacingVertical,
                 // The step may be smaller than wished for by a factor of sqrt(5 / 2).
                 1.6 * m_length / (m_tickLimit - 1));
    const double wish = std::abs(span) * (spacing / m_length);
    if (!std::isnormal(wish))
        return;
    const Step step = NearestStep(wish);
    const double size = step.Times(1.0);
    // Beyond this index neighbouring ticks are no longer different numbers.
    constexpr double largestIndex = 4503599627370496.0; // 2^52
    const double first = std::ceil(std::min(m_start, m_stop) / size - indexTolerance);
    const double last = std::floor(std::max(m_start, m_stop) / size + indexTolerance);
    if (!(std::abs(first) < largestIndex && std::abs(last) < largestIndex))
        return;

    m_stepExponent = step.exponent;
    for (auto index = static_cast<std::int64_t>(first);
         index <= static_cast<std::int64_t>(last) &&
         m_ticks.size() < static_cast<std::size_t>(m_tickLimit);
         ++index) {
        const double value = step.Times(static_cast<double>(index));
        m_ticks.push_back({value, ValueToPixel(value)});
    }
    if (span < 0.0)
        std::reverse(m_ticks.begin(), m_ticks.end());
    std::vector<double> values;
    for (const Tick& tick : m_ticks)
        values.push_back(tick.value);
    m_canFormatTicks = m_formatter && CanFormat(values, &IStringFormatter::Format);
}

namespace {

/// Whether a text begins with "-0", "-0.0" and so on.
bool isMinusZero(const QString& text)
{
    int end = 1;
    while (end < text.size() && (text[end] == QLatin1Char('0') || text[end] == QLatin1Char('.')))
        ++end;
    return text.startsWith(QLatin1String("-0")) && !(end < text.size() && text[end].isDigit());
}

} // namespace

bool axisDefinition::CanFormat(const std::vector<double>& values, Format format) const
{
    QString previous;
    for (const double value : values) {
        const QString label = (m_formatter.get()->*format)(value);
        if (label == previous || isMinusZero(label))
            return false;
        previous = label;
    }
    return true;
}

void axisDefinition::SetStringFormatter(std::shared_ptr<IStringFormatter> formatter)
{
    m_formatter = std::move(formatter);
    m_dirty = true;
}

void axisDefinition::SetUnit(const QString& unit)
{
    m_unit = unit;
    m_canFormatPixels.reset();
}

namespace {

// Longer numbers do not fit.
constexpr int mostTickDecimals = 6;
constexpr int mostReadoutDecimals = 8;

} // namespace

QString axisDefinition::Label(double value) const
{
    const std::vector<Tick>& ticks = GetTicks();
    if (m_canFormatTicks)
        return m_formatter->Format(value);
    if (ticks.empty())
        return Free(value);
    const auto tick = std::find_if(ticks.begin(), ticks.end(),
                                   [value](const Tick& each) { return each.value == value; });
    if (tick == ticks.end())
        return Plain(value, m_stepExponent, mostTickDecimals);
    m_plainLabels.resize(ticks.size());
    QString& label = m_plainLabels[static_cast<std::size_t>(tick - ticks.begin())];
    if (label.isNull())
        label = Plain(value, m_stepExponent, mostTickDecimals);
    return label;
}

QString axisDefinition::LabelWithUnit(double value) const
{
    const bool canFormat = m_formatter && CanFormatPixels();
    if (canFormat && !m_unit)
        return m_formatter->FormatWithUnit(value);
    QString unit = m_unit.value_or(QString());
    if (m_formatter && !m_unit) {
        const QString number = m_formatter->Format(value);
        const QString both = m_formatter->FormatWithUnit(value);
        const QString rest = both.startsWith(number) ? both.mid(number.size()) : both;
        // Not where the formatter scales the number for its unit.
        if (!rest.isEmpty() && !rest[0].isSpace() && !rest[0].isLetter())
            return both;
        unit = rest;
    }
    if (canFormat)
        return m_formatter->Format(value) + unit;
    const double pixel = std::abs(m_stop - m_start) / (m_length - 1);
    const double lastPlace = std::floor(std::log10(pixel));
    if (!IsUsable() ||
        !std::isfinite(lastPlace)) // a resolution below the smallest double, for example
        return Free(value) + unit;
    return Plain(value, static_cast<int>(lastPlace), mostReadoutDecimals) + unit;
}

bool axisDefinition::CanFormatPixels() const
{
    GetTicks(); // drops what was cached for another range
    if (!m_canFormatPixels) {
        constexpr int mostPixels = 4096; // as many as a large screen has
        std::vector<double> values;
        for (int pixel = 0; IsUsable() && pixel < std::min(m_length, mostPixels); ++pixel)
            values.push_back(PixelToValue(pixel));
        m_canFormatPixels = CanFormat(values, m_unit ? &IStringFormatter::Format
                                                     : &IStringFormatter::FormatWithUnit);
    }
    return *m_canFormatPixels;
}

QString axisDefinition::Free(double value)
{
    constexpr int freeDigits = 6; // where no step asks for more or less
    return QString::number(value, 'g', freeDigits);
}

QString axisDefinition::Plain(double value, int lastPlace, int mostDecimals)
{
    if (!std::isfinite(value))
        return Free(value);
    const double magnitude = std::abs(value);
    const bool isZero = value == 0.0 || magnitude < 0.5 * std::pow(10.0, lastPlace);
    constexpr double largestPlain = 1e7;
    if (-lastPlace <= mostDecimals && magnitude < largestPlain)
        return QString::number(isZero ? 0.0 : value, 'f', std::max(0, -lastPlace));
    if (isZero)
        return QStringLiteral("0");
    constexpr int mostDigits = 17;
    const int digits = static_cast<int>(std::floor(std::log10(magnitude))) - lastPlace + 1;
    return QString::number(value, 'g', std::max(1, std::min(digits, mostDigits)));
}
