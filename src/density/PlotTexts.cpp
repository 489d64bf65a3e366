// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotTexts.h"

#include "density/PlotState.h"

#include <QLocale>

#include <array>
#include <cmath>

namespace density {

static QString number(double value) { return QLocale::c().toString(value, 'g', 5); }

TimeScale timeScaleOf(const PlotState& state, double farthest)
{
    if (!state.shape || state.timeUnit == TimeUnit::Symbols || !(state.symbolRate > 0.0))
        return {};
    static const std::array<const char*, 6> units{"s", "ms", "\u00b5s", "ns", "ps", "fs"};
    std::size_t step = 0;
    double perSymbol = 1.0 / state.symbolRate;
    for (; perSymbol * farthest < 1.0 && step + 1 < units.size(); ++step)
        perSymbol *= 1000.0;
    return {perSymbol, QString::fromUtf8(units[step])};
}

/// A number with its unit, in thousands of it where that is shorter.
static QString withUnit(double value, const QString& unit)
{
    static const std::array<const char*, 10> prefixes{"f", "p", "n", "\u00b5", "m",
                                                      "",  "k", "M", "G",      "T"};
    constexpr std::size_t none = 5;
    std::size_t step = none;
    for (; std::abs(value) >= 1000.0 && step + 1 < prefixes.size(); ++step)
        value /= 1000.0;
    for (; std::abs(value) < 1.0 && value != 0.0 && step > 0; --step)
        value *= 1000.0;
    return number(value) + ' ' + QString::fromUtf8(prefixes[step]) + unit;
}

QString PlotTexts::drawing()
{
    return tr("Click corners; double click closes, Backspace undoes, Esc ends");
}

QString PlotTexts::timeOfCursors() const
{
    const double first = m_state.cursors.places[Cursors::FirstX];
    const double second = m_state.cursors.places[Cursors::SecondX];
    const double rate = m_state.symbolRate;
    const auto symbols = [](double time) { return number(time) + QStringLiteral(" T"); };
    const auto seconds = [rate](double time) { return withUnit(time / rate, QStringLiteral("s")); };
    const bool isInSeconds = m_state.timeUnit == TimeUnit::Seconds && rate > 0.0;
    const auto text = [&](double time) { return isInSeconds ? seconds(time) : symbols(time); };
    QString result =
        QStringLiteral("%1, %2: %3").arg(text(first), text(second), text(second - first));
    if (!(rate > 0.0))
        return result;
    result +=
        QStringLiteral(" = ") + (isInSeconds ? symbols(second - first) : seconds(second - first));
    if (second != first)
        result += QStringLiteral(", 1/\u0394t ") +
                  withUnit(rate / (second - first), QStringLiteral("Hz"));
    return result;
}

QString PlotTexts::cursors() const
{
    const auto& at = m_state.cursors.places;
    const QString unit = m_state.unit.isEmpty() ? QString() : ' ' + m_state.unit;
    const auto values = [&](double first, double second) {
        return QStringLiteral("%1%4, %2%4: %3%4")
            .arg(number(first), number(second), number(second - first), unit);
    };
    QString result = m_state.shape
                         ? timeOfCursors()
                         : QStringLiteral("I ") + values(at[Cursors::FirstX], at[Cursors::SecondX]);
    result += m_state.shape ? QStringLiteral("   ") : QStringLiteral("   Q ");
    result += values(at[Cursors::FirstY], at[Cursors::SecondY]);
    if (!m_state.data.snapshot)
        return result;
    const Snapshot& counted = *m_state.data.snapshot;
    const double column =
        (at[Cursors::FirstX] - counted.window.left) / counted.window.width() * counted.size.columns;
    const double row =
        (at[Cursors::FirstY] - counted.window.bottom) / counted.window.height() * counted.size.rows;
    if (column >= 0.0 && column < counted.size.columns && row >= 0.0 && row < counted.size.rows)
        result +=
            QStringLiteral("   ") +
            tr("count %1").arg(number(counted.at(static_cast<int>(column), static_cast<int>(row))));
    return result;
}

QString PlotTexts::symbols() const
{
    const QLocale locale(QLocale::English); // points are decimal here, whatever the language
    if (!m_state.data.snapshot)
        return tr("No symbols yet");
    const Snapshot& counted = *m_state.data.snapshot;
    QString result = tr("%1 symbols").arg(locale.toString(qint64(counted.symbolCount)));
    if (counted.symbolCount != counted.allSymbols)
        result = tr("%1 of %2 symbols")
                     .arg(locale.toString(qint64(counted.symbolCount)),
                          locale.toString(qint64(counted.allSymbols)));
    if (counted.leftOut.tornTraces > 0 || counted.leftOut.badSamples > 0)
        result += tr(", left out: %1 torn symbols, %2 bad samples")
                      .arg(locale.toString(qint64(counted.leftOut.tornTraces)),
                           locale.toString(qint64(counted.leftOut.badSamples)));
    if (m_state.data.mask) {
        using Verdict = MaskTest::Verdict;
        const QString verdict = m_state.data.mask->verdict == Verdict::Running ? tr("testing")
                                : m_state.data.mask->verdict == Verdict::Pass  ? tr("passed")
                                                                               : tr("failed");
        result += tr(", mask %1: hit by %2 of %3 symbols")
                      .arg(verdict, locale.toString(qint64(m_state.data.mask->hitCount)),
                           locale.toString(qint64(m_state.data.mask->symbolCount)));
    }
    const ErrorVectors::Figures& errors = m_state.data.errors;
    if (errors.evm.isGiven() && errors.mer.isGiven())
        result += tr(", EVM %1 %, MER %2 dB")
                      .arg(QLocale::c().toString(errors.evm.value, 'f', 2),
                           QLocale::c().toString(errors.mer.value, 'f', 2));
    return m_state.isPaused ? result + tr(", paused") : result;
}

} // namespace density
