// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/CsvTimes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

// Part of a step that no diagram shows. Programs that keep times in single precision write
// meaningless digits.
constexpr double harmless = 0.01;
constexpr double exactPart = 0.9; // of the steps, at least, are the same where times are exact

} // namespace

CsvTimes::CsvTimes(std::size_t column, const QString& title, double usualStep,
                   const std::vector<CsvRows::Row>& rows)
    : m_column(column)
    , m_title(title)
    , m_step(std::abs(usualStep))
{
    std::vector<double> times;
    for (const CsvRows::Row& row : rows) {
        const auto time = row.number(column);
        if (!time || !std::isfinite(*time))
            continue;
        learn(row.cell(column));
        times.push_back(*time);
    }
    double sum = 0.0;
    double count = 0.0;
    double sameCount = 0.0;
    for (std::size_t i = 1; i < times.size(); ++i) {
        const double step = times[i] - times[i - 1];
        const double digit = resolution(times[i]);
        const double off = std::abs(step - usualStep);
        if (off > 0.5 * std::abs(usualStep) + digit)
            continue;
        sum += step;
        ++count;
        sameCount += off < 0.01 * digit;
    }
    if (count == 0.0)
        return;
    m_step = std::abs(sum) / count;
    m_isExact = sameCount >= exactPart * count;
}

/// Learns from a cell's number how finely times are written.
void CsvTimes::learn(std::string_view cell)
{
    const std::size_t end = std::min(cell.find_first_of("eE"), cell.size());
    int exponent = 0;
    if (end + 1 < cell.size())
        std::from_chars(cell.data() + end + (cell[end + 1] == '+' ? 2 : 1),
                        cell.data() + cell.size(), exponent);
    bool isFraction = false;
    int decimals = 0;
    int digits = 0;
    for (const char letter : cell.substr(0, end)) {
        isFraction = isFraction || letter == '.' || letter == ',';
        if (letter < '0' || letter > '9')
            continue;
        decimals += isFraction;
        digits += digits > 0 || letter != '0';
    }
    constexpr int most = 400; // any that a number can have
    m_decimals = std::max(m_decimals, decimals - std::clamp(exponent, -most, most));
    m_digits = std::max(m_digits, digits);
}

/// Value of a time's last digit, whether the numbers have a fixed number of decimals or of digits.
double CsvTimes::resolution(double time) const
{
    const double magnitude = time == 0.0 ? -400.0 : std::floor(std::log10(std::abs(time)));
    return std::max(std::pow(10.0, -m_decimals), std::pow(10.0, magnitude + 1.0 - m_digits));
}

bool CsvTimes::take(std::int64_t number, const CsvRows::Row& row)
{
    const auto time = row.number(m_column);
    if (!time || !std::isfinite(*time))
        return false;
    learn(row.cell(m_column));
    const double rows = static_cast<double>(number - m_lastNumber);
    const double step = *time - m_last;
    // Each time is rounded by up to half a last digit, so both of them by one, and so is the usual
    // step.
    const double larger = std::max(std::abs(*time), std::abs(m_last));
    const double tolerance = (m_isExact ? 0.5 : 2.0) * resolution(larger) +
                             4.0 * std::numeric_limits<double>::epsilon() * larger +
                             harmless * std::abs(m_step);
    const bool isFirst = m_lastNumber == 0;
    m_last = *time;
    m_lastNumber = number;
    if (isFirst || std::abs(step - rows * m_step) <= tolerance)
        return false;
    std::int64_t& first = step < 0.0 ? m_firstBack : m_firstUneven;
    const bool isNews = first == 0;
    if (isNews)
        first = number;
    return isNews;
}

std::optional<Message> CsvTimes::notice() const
{
    if (m_firstBack > 0)
        return tr("the times in column %1 run backwards, first in row %2: the rows are out of "
                  "order, or of several recordings; they are shown one after the other")
            .arg(m_title, QString::number(m_firstBack));
    if (m_firstUneven > 0)
        return tr("the times in column %1 are not evenly spaced, first in row %2: rows are "
                  "missing, or the sample rate varies; they are shown as if it did not")
            .arg(m_title, QString::number(m_firstUneven));
    return std::nullopt;
}
