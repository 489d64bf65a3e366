// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/DensityReadings.h"

#include "workbench/player/Figures.h"
#include "workbench/window/panes/ReadingTable.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

using Figure = density::Figure;

constexpr std::size_t mostEyes = 3; // that have a line in the table
constexpr int levelDigits = 4;

QString counted(std::int64_t count) { return QLocale(QLocale::English).toString(count); }

QString reasonOf(const Figure& figure) { return density::textOf(figure.reason); }

QString scientific(double value) { return QLocale::c().toString(value, 'e', 1); }

/// A value with its interval, or why there is none.
template<class Text>
QString withInterval(const Figure& figure, const Text& text)
{
    if (!figure.isGiven())
        return reasonOf(figure);
    if (!(figure.low < figure.high))
        return text(figure.value);
    return QStringLiteral("%1 (%2 … %3)")
        .arg(text(figure.value), text(figure.low), text(figure.high));
}

/// The largest level that is known.
double largestOf(const density::EyeFigures& figures)
{
    double largest = 0.0;
    for (const density::EyeFigures::Level& level : figures.levels)
        largest = std::max(largest, std::abs(level.spread.mean.value));
    return largest;
}

} // namespace

std::vector<std::pair<QString, QString>> DensityReadings::meanings()
{
    return {{tr("Error rate"), tr("½ erfc(Q / √2): the part of the symbols that is taken for the "
                                  "other level at the best instant and level")},
            {tr("Height"), tr("Between the levels beyond which 1 of 10¹² symbols of either "
                              "level lies, as their noise is Gaussian")},
            {tr("Width"), tr("A symbol period less the total jitter (UI)")},
            {tr("TJ"), tr("Total jitter: between the times before and after which 1 of 10¹² "
                          "crossings lies, by the parts below (UI)")},
            {tr("RJ"), tr("Random jitter: standard deviation of its Gaussian (UI)")},
            {tr("DJ"), tr("Deterministic jitter, from one end to the other: two instants (dual "
                          "Dirac) or a sine, whichever is likelier (UI)")}};
}

std::size_t DensityReadings::lineCount(const EyeFiguredPtr& figured)
{
    return figured ? std::clamp<std::size_t>(figured->figures.eyes.size(), 1, mostEyes) : 1;
}

ReadingTable* DensityReadings::makeEyeTable(std::size_t eyeCount)
{
    auto* table = new ReadingTable;
    QMap<QString, QString> texts;
    for (const auto& [name, meaning] : meanings())
        texts[name] = meaning;
    table->explain(texts);
    table->addLines(
        {tr("Q"), tr("Error rate"), tr("Height"), tr("Width"), tr("TJ"), tr("RJ"), tr("DJ")},
        static_cast<int>(std::min(eyeCount, mostEyes)), QStringLiteral("888.88"));
    // No wider than they need, so that all are seen in half of a usual window.
    const char* const longest[] = {"8.8e-888", "-88.88 m",  "8.888 UI",
                                   "8.888 UI", "0.8888 UI", "0.8888 UI"};
    int column = 1;
    for (const char* text : longest)
        table->fitColumn(column++, QString::fromLatin1(text));
    return table;
}

ReadingTable* DensityReadings::makePointTable()
{
    auto* table = new ReadingTable;
    table->addLines({tr("EVM RMS"), tr("MER")}, 1, QStringLiteral("-88.88 ± 0.08 dB"));
    return table;
}

void DensityReadings::setUnits(const QString& unit, std::optional<double> symbolSeconds)
{
    m_unit = unit;
    m_symbolSeconds = symbolSeconds;
}

QString DensityReadings::time(const Figure& figure, int decimals) const
{
    if (!figure.isGiven())
        return QString();
    return m_symbolSeconds ? figures::duration(figure.value * *m_symbolSeconds)
                           : figures::fixed(figure.value, decimals, QStringLiteral("UI"));
}

QString DensityReadings::gate(std::int64_t kept, std::int64_t all, std::int64_t leftOut)
{
    QString text = kept < all
                       ? tr("of the newest %1 of %2 symbols").arg(counted(kept), counted(all))
                       : tr("of %1 symbols").arg(counted(all));
    if (leftOut > 0)
        text += tr("; left out: %1").arg(counted(leftOut));
    return text;
}

void DensityReadings::show(ReadingTable& table, const EyeFiguredPtr& figured) const
{
    const std::vector<density::EyeFigures::Eye> none;
    const auto& eyes = figured ? figured->figures.eyes : none;
    const QString why =
        figured && eyes.empty() ? density::textOf(figured->figures.reason) : QString();
    constexpr int columnCount = 7;
    table.setNote(0, columnCount, why, why);
    table.setGate(figured
                      ? tr("at 1e-12, %1")
                            .arg(gate(figured->keptCount, figured->allSymbols, figured->leftOut))
                      : QString(),
                  QString());
    const figures::Levels levels(figured ? largestOf(figured->figures) : 0.0, levelDigits, m_unit);
    for (std::size_t line = 0; line < lineCount(figured); ++line) {
        if (line >= eyes.size()) {
            for (std::size_t column = 0; column < columnCount; ++column)
                table.show(line, column, QString());
            continue;
        }
        const auto& eye = eyes[eyes.size() - 1 - line]; // the uppermost first, as they are seen
        const auto text = [](const Figure& figure, const QString& given) {
            return figure.isGiven() ? given : QString();
        };
        table.show(line, 0, text(eye.q, figures::fixed(eye.q.value, 2)), reasonOf(eye.q));
        table.show(line, 1, text(eye.errorRate, scientific(eye.errorRate.value)),
                   reasonOf(eye.errorRate));
        table.show(line, 2, text(eye.height, levels.text(eye.height.value)), reasonOf(eye.height));
        table.show(line, 3, time(eye.width, 3), reasonOf(eye.width));
        table.show(line, 4, time(eye.totalJitter, 3), reasonOf(eye.totalJitter));
        table.show(line, 5, time(eye.jitter.random, 4), reasonOf(eye.jitter.random));
        table.show(line, 6, time(eye.jitter.deterministic, 4), reasonOf(eye.jitter.deterministic));
    }
}

void DensityReadings::show(ReadingTable& table, const density::ErrorVectors::Figures& errors,
                           std::int64_t symbolCount, std::int64_t leftOut) const
{
    const auto text = [](const Figure& figure, const QString& unit) {
        const double deviation = 0.5 * (figure.high - figure.value);
        return figure.isGiven() ? QStringLiteral("%1 ± %2 %3")
                                      .arg(figure.value, 0, 'f', 2)
                                      .arg(deviation, 0, 'f', 2)
                                      .arg(unit)
                                : QString();
    };
    table.show(0, 0, text(errors.evm, QStringLiteral("%")), reasonOf(errors.evm));
    table.show(0, 1, text(errors.mer, QStringLiteral("dB")), reasonOf(errors.mer));
    const std::int64_t measured = errors.evm.isGiven() ? errors.evm.count : symbolCount;
    table.setGate(gate(measured, symbolCount, leftOut), QString());
}

std::vector<std::pair<QString, QString>> DensityReadings::lines(const EyeFigured& figured) const
{
    std::vector<std::pair<QString, QString>> result;
    const density::EyeFigures& eyeFigures = figured.figures;
    const figures::Levels levels(largestOf(eyeFigures), levelDigits, m_unit);
    const auto level = [&levels](double value) { return levels.text(value); };
    const auto plain = [](double value) { return figures::fixed(value, 2); };
    const auto unitTime = [this](double value) {
        return m_symbolSeconds ? figures::duration(value * *m_symbolSeconds)
                               : figures::fixed(value, 4, QStringLiteral("UI"));
    };
    for (std::size_t k = eyeFigures.levels.size(); k-- > 0;) {
        const density::Spread& spread = eyeFigures.levels[k].spread;
        const QString number = QString::number(k);
        result.emplace_back(tr("Level %1").arg(number), withInterval(spread.mean, level));
        result.emplace_back(tr("σ of level %1").arg(number), withInterval(spread.sigma, level));
    }
    for (std::size_t k = eyeFigures.eyes.size(); k-- > 0;) {
        const density::EyeFigures::Eye& eye = eyeFigures.eyes[k];
        const QString of =
            eyeFigures.eyes.size() > 1 ? QStringLiteral(" %1–%2").arg(k).arg(k + 1) : QString();
        result.emplace_back(tr("Q") + of, withInterval(eye.q, plain));
        result.emplace_back(tr("Error rate") + of, withInterval(eye.errorRate, scientific));
        result.emplace_back(tr("Height") + of, withInterval(eye.height, level));
        result.emplace_back(tr("Inner height") + of, withInterval(eye.innerHeight, level));
        result.emplace_back(tr("Width") + of, withInterval(eye.width, unitTime));
        result.emplace_back(tr("TJ") + of, withInterval(eye.totalJitter, unitTime));
        result.emplace_back(tr("Jitter RMS") + of, withInterval(eye.jitter.rms, unitTime));
        result.emplace_back(tr("Jitter p-p") + of, withInterval(eye.jitter.peakToPeak, unitTime));
        result.emplace_back(tr("RJ") + of, withInterval(eye.jitter.random, unitTime));
        result.emplace_back(tr("DJ") + of, withInterval(eye.jitter.deterministic, unitTime));
    }
    return result;
}

std::vector<std::pair<QString, QString>>
DensityReadings::lines(const density::ErrorVectors::Figures& errors) const
{
    const auto percent = [](double value) { return figures::fixed(value, 2, "%"); };
    const auto decibels = [](double value) { return figures::fixed(value, 2, "dB"); };
    std::vector<std::pair<QString, QString>> result{
        {tr("EVM RMS"), withInterval(errors.evm, percent)},
        {tr("MER"), withInterval(errors.mer, decibels)}};
    for (const density::ErrorVectors::Cluster& cluster : errors.clusters) {
        const QString name = tr("EVM at %1, %2")
                                 .arg(cluster.ideal.real(), 0, 'f', 2)
                                 .arg(cluster.ideal.imag(), 0, 'f', 2);
        result.emplace_back(name, withInterval(cluster.evm, percent));
    }
    return result;
}
