// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/CsvLayout.h"

#include "workbench/sources/CsvWords.h"
#include "workbench/sources/PlainText.h"

#include <algorithm>
#include <cmath>

using namespace csvwords;

namespace {

constexpr char separators[] = {'\t', ';', '|', ',', ' '};
constexpr std::size_t maxJudgedRowCount = 100;
constexpr int maxPreambleLength = 100;

QString textOf(std::string_view bytes)
{
    const auto size = static_cast<int>(bytes.size());
    const QString text = QString::fromUtf8(bytes.data(), size);
    // Bytes that are not UTF-8 are most often the micro sign of an older encoding.
    return text.contains(QChar::ReplacementCharacter) ? QString::fromLatin1(bytes.data(), size)
                                                      : text;
}

QStringList textsOf(const CsvRows::Row& row)
{
    QStringList texts;
    for (std::size_t i = 0; i < row.size(); ++i)
        texts += plainText(textOf(row.cell(i))).simplified();
    return texts;
}

/// The last rows of a file's beginning are most certain to be numbers, not what comes before.
std::size_t firstJudged(const std::vector<CsvRows::Row>& rows)
{
    return rows.size() - std::clamp<std::size_t>(rows.size() / 4, 1, maxJudgedRowCount);
}

std::size_t numberCount(const std::vector<CsvRows::Row>& rows)
{
    std::size_t count = 0;
    for (std::size_t r = rows.empty() ? 0 : firstJudged(rows); r < rows.size(); ++r) {
        for (std::size_t i = 0; i < rows[r].size(); ++i)
            count += rows[r].number(i).has_value();
    }
    return count;
}

/// A rate without the error of rounded times: the rate or its inverse with the fewest digits.
double roundRate(double rate)
{
    constexpr double tolerance = 1e-6; // of the rate
    for (int digits = 1; digits < 9; ++digits) {
        const auto round = [digits](double x) {
            return QString::number(x, 'g', digits).toDouble();
        };
        for (const double rounded : {round(rate), 1.0 / round(1.0 / rate)}) {
            if (std::abs(rounded - rate) <= tolerance * rate)
                return rounded;
        }
    }
    return rate;
}

} // namespace

/// How a column's numbers follow one another.
struct CsvLayout::Ramp
{
    /// Evenly rising, as only a count or a clock is; fewer numbers may be so by chance.
    bool isSteady() const { return isRising && deviation < evenness && count >= 4; }
    /// Evenly rising except in a few places.
    bool isMostlySteady() const { return usualStep > 0.0 && evenPart >= 0.9 && count >= 10; }
    bool countsRows() const { return isSteady() && step == 1.0; }

    static constexpr double evenness = 0.1; // of a step

    std::size_t count = 0;
    bool isRising = false;   // never falls, and ends higher than it starts
    double step = 0.0;       // mean
    double usualStep = 0.0;  // median
    double deviation = 0.0;  // most from even steps, steps
    double risingPart = 0.0; // of the steps
    double evenPart = 0.0;   // of the steps, about the usual one
};

Result<CsvLayout> CsvLayout::of(const QByteArray& text, bool isWhole,
                                const Recording::Options& options)
{
    CsvLayout layout;
    if (text.startsWith("\xff\xfe") || text.startsWith("\xfe\xff"))
        return failure(tr("this is text in UTF-16; save it in UTF-8"));
    layout.begin = text.startsWith("\xef\xbb\xbf") ? 3 : 0;
    layout.splitRows(text.mid(static_cast<int>(layout.begin)), isWhole);
    layout.findNumbers();
    if (layout.m_numeric.empty())
        return failure(tr("no row of numbers is found; choose a text file with a row for each "
                          "sample, its cells separated by tabs, semicolons, commas or spaces"));
    layout.findNames();
    // A missing column is reported before a missing sample rate.
    const auto time = layout.findTime(options);
    const auto columns = layout.chooseColumns(options.columns);
    if (!columns || !time)
        return tl::unexpected(columns ? time.error() : columns.error());
    layout.rowCount = static_cast<std::int64_t>(layout.m_rows.size());
    layout.m_rows.clear();
    return layout;
}

// The separator is the one that finds most numbers; of equals, the first.
void CsvLayout::splitRows(const QByteArray& text, bool isWhole)
{
    std::size_t best = 0;
    for (const char candidate : separators) {
        std::vector<CsvRows::Row> rows;
        CsvRows splitter(candidate, [&rows](const CsvRows::Row& row) { rows.push_back(row); });
        if (splitter.take(text.constData(), static_cast<std::size_t>(text.size())) && isWhole)
            splitter.finish();
        const std::size_t count = numberCount(rows);
        if (count > best) {
            best = count;
            separator = candidate;
            m_rows = std::move(rows);
        }
    }
}

void CsvLayout::findNumbers()
{
    if (m_rows.empty())
        return;
    const std::size_t first = firstJudged(m_rows);
    for (std::size_t r = first; r < m_rows.size(); ++r)
        m_width = std::max(m_width, m_rows[r].size());
    for (std::size_t column = 0; column < m_width; ++column) {
        const auto count =
            std::count_if(m_rows.begin() + static_cast<std::ptrdiff_t>(first), m_rows.end(),
                          [column](const auto& row) { return row.number(column).has_value(); });
        if (2 * static_cast<std::size_t>(count) > m_rows.size() - first)
            m_numeric.push_back(column);
    }
    std::size_t row = 0;
    while (row < m_rows.size() &&
           !(isNumbers(row) && (row + 1 == m_rows.size() || isNumbers(row + 1))))
        ++row;
    firstRow = static_cast<std::int64_t>(row);
    if (row == m_rows.size())
        m_numeric.clear();
}

/// Whether a row has numbers where the last ones have them, and nothing else there.
bool CsvLayout::isNumbers(std::size_t row) const
{
    const CsvRows::Row& cells = m_rows[row];
    const auto isNumber = [&cells](std::size_t column) { return cells.number(column).has_value(); };
    const auto isAllowed = [&](std::size_t i) { return isNumber(i) || cells.cell(i).empty(); };
    return std::any_of(m_numeric.begin(), m_numeric.end(), isNumber) &&
           std::all_of(m_numeric.begin(), m_numeric.end(), isAllowed);
}

/// Whether a row has a text for each column of numbers; the first may be an index without a name.
bool CsvLayout::isNames(std::size_t row) const
{
    return std::all_of(m_numeric.begin() + (m_numeric.size() > 1 ? 1 : 0), m_numeric.end(),
                       [&](std::size_t i) { return !m_rows[row].cell(i).empty(); });
}

void CsvLayout::findNames()
{
    auto row = static_cast<std::size_t>(firstRow);
    const auto takeRow = [&](QStringList& texts) {
        texts = textsOf(m_rows[--row]);
        if (texts.value(0).startsWith(QLatin1Char('#'))) // a comment for some programs
            texts[0] = texts[0].mid(1).simplified();
        if (texts.value(0).isEmpty() && texts.size() > static_cast<int>(m_width))
            texts.removeFirst();
    };
    if (row > 0 && isNames(row - 1))
        takeRow(m_names);
    if (!m_names.isEmpty() && row > 0 && isNames(row - 1)) {
        m_units = m_names;
        takeRow(m_names);
    }
    for (std::size_t i = 0; i < row && i < maxPreambleLength; ++i) {
        QStringList texts = textsOf(m_rows[i]);
        texts.removeAll(QString());
        if (texts.size() > 1)
            texts[0] += QStringLiteral(": ") + texts.mid(1).join(QStringLiteral(", "));
        if (!texts.isEmpty())
            details += plainText(texts[0], maxLineLength);
    }
}

CsvLayout::Ramp CsvLayout::ramp(std::size_t column) const
{
    std::vector<double> values;
    for (auto i = static_cast<std::size_t>(firstRow); i < m_rows.size(); ++i)
        values.push_back(m_rows[i].number(column).value_or(std::nan("")));
    if (!std::isfinite(values.back()) && values.size() > 1) // the last row may be cut off
        values.pop_back();
    Ramp ramp;
    ramp.count = values.size();
    const double distance = values.back() - values.front();
    ramp.step = distance / static_cast<double>(values.size() - 1);
    ramp.isRising = distance > 0.0 && std::isfinite(ramp.step);
    std::vector<double> steps;
    for (std::size_t i = 1; i < values.size(); ++i) {
        const double even = values.front() + static_cast<double>(i) * ramp.step;
        ramp.isRising = ramp.isRising && values[i] >= values[i - 1]; // false for NaN
        ramp.deviation = std::max(ramp.deviation, std::abs(values[i] - even) / ramp.step);
        if (const double step = values[i] - values[i - 1]; std::isfinite(step))
            steps.push_back(step);
    }
    if (steps.empty())
        return ramp;
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    ramp.usualStep = *middle;
    const auto part = [&steps](const auto& holds) {
        return static_cast<double>(std::count_if(steps.begin(), steps.end(), holds)) /
               static_cast<double>(steps.size());
    };
    ramp.risingPart = part([](double step) { return step > 0.0; });
    ramp.evenPart = part([&ramp](double step) {
        return std::abs(step - ramp.usualStep) < Ramp::evenness * ramp.usualStep;
    });
    return ramp;
}

/// Whether a column is one of times or counts row by row.
bool CsvLayout::isClock(std::size_t column, const Ramp& ramp) const
{
    constexpr double mostly = 2.0 / 3.0;
    const QStringList texts = words(column);
    if (isCounter(texts))
        return ramp.isRising && ramp.countsRows();
    if (texts.isEmpty())
        return column == m_numeric.front() && (ramp.isSteady() || ramp.isMostlySteady());
    if (isNamedTime(texts))
        return ramp.usualStep != 0.0 || ramp.isRising;
    return isTime(texts) && (ramp.isRising || ramp.risingPart > mostly);
}

Result<void> CsvLayout::findTime(const Recording::Options& options)
{
    double seconds = 0.0; // of a row
    for (const std::size_t column : m_numeric) {
        const QStringList texts = words(column);
        const Ramp steps = ramp(column);
        const bool isCount = isCounter(texts) || (texts.isEmpty() && steps.countsRows());
        const bool isOther = isCount ? !m_clocks.empty() : seconds > 0.0 && !isNamedTime(texts);
        if (m_clocks.size() + 1 == m_numeric.size() || isOther || !isClock(column, steps))
            continue;
        m_clocks.push_back(column);
        if (seconds > 0.0)
            continue;
        times = CsvTimes(column, title(column), steps.usualStep,
                         {m_rows.begin() + static_cast<std::ptrdiff_t>(firstRow), m_rows.end()});
        if (!isCount)
            seconds = times.step() * secondsOf(texts.isEmpty() ? QString() : texts.last());
    }
    sampleRate = options.sampleRate ? options.sampleRate : statedRate();
    if (!options.sampleRate && seconds > 0.0)
        sampleRate = roundRate(1.0 / seconds);
    if (sampleRate && !Recording::isSampleRate(*sampleRate))
        return failure(tr("it says that the sample rate is %1 Hz, not from %2 to %3")
                           .arg(*sampleRate)
                           .arg(Recording::minSampleRate)
                           .arg(Recording::maxSampleRate),
                       Hint::RightSampleRate);
    return {};
}

/// The rate in the preamble, or of a name with a number below it; none when there is none.
std::optional<double> CsvLayout::statedRate() const
{
    const auto rateOf = [](const QString& key, const QString& value) -> std::optional<double> {
        const QStringList texts = wordsOf(key);
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (!isNumber)
            return std::nullopt;
        if (texts.contains(QStringLiteral("increment")) ||
            texts.join(QLatin1Char(' ')).startsWith(QLatin1String("sample interval")))
            return roundRate(1.0 / number);
        const bool isRate = texts.contains(QStringLiteral("rate")) &&
                            texts.value(0).startsWith(QLatin1String("sampl"));
        return isRate ? std::optional<double>(number) : std::nullopt;
    };
    for (const QString& line : details) {
        const int colon = int(line.lastIndexOf(QLatin1String(": ")));
        if (const auto rate = rateOf(line.left(colon), line.mid(colon + 2)))
            return rate;
    }
    for (int i = 0; i < m_names.size(); ++i) {
        if (const auto rate = rateOf(m_names[i], m_units.value(i)))
            return rate;
    }
    return std::nullopt;
}

QStringList CsvLayout::words(std::size_t column) const
{
    const auto i = static_cast<int>(column);
    return wordsOf(m_names.value(i) + QLatin1Char(' ') + m_units.value(i));
}

QString CsvLayout::title(std::size_t column) const
{
    const auto i = static_cast<int>(column);
    const QString name = m_names.value(i).isEmpty() ? QString::number(i + 1) : m_names.value(i);
    return m_units.value(i).isEmpty() ? name : name + QStringLiteral(" (%1)").arg(m_units.value(i));
}

Result<void> CsvLayout::chooseColumns(const QStringList& wanted)
{
    if (m_width == CsvRows::maxCellCount)
        notices += tr("its first %1 columns are read").arg(m_width);
    for (const std::size_t column : m_numeric) {
        if (wanted.isEmpty() && std::count(m_clocks.begin(), m_clocks.end(), column) == 0)
            columns.push_back(column);
    }
    for (const QString& name : wanted) {
        bool isNumber = false;
        int column = name.toInt(&isNumber) - 1;
        if (!isNumber)
            column = int(m_names.indexOf(name));
        if (column < 0 || column >= static_cast<int>(m_width))
            return failure(tr("there is no column \"%1\"; give a number from 1 to %2 or a name")
                               .arg(plainText(name), QString::number(m_width)));
        columns.push_back(static_cast<std::size_t>(column));
    }
    if (columns.size() == 2) {
        const QString first = words(columns[0]).value(0);
        const QString second = words(columns[1]).value(0);
        isComplex = (isAmong(first, {"i", "re", "real", "inphase"}) &&
                     isAmong(second, {"q", "im", "imag", "imaginary", "quadrature"})) ||
                    (wanted.isEmpty() && m_names.isEmpty() && m_clocks.empty());
    }
    QStringList titles;
    for (const std::size_t column : columns)
        titles += title(column);
    details += tr("Columns: %1").arg(plainText(titles.join(QStringLiteral(", ")), maxLineLength));
    return {};
}
