// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotTexts.h"

#include "density/PlotState.h"

#include <QLocale>

#include <array>

namespace density {

static QString number(double value) { return QLocale::c().toString(value, 'g', 5); }

TimeScale timeScaleOf(const PlotState& state, double farthest)
{
    if (state.timeUnit == TimeUnit::Symbols || !(state.symbolRate > 0.0))
        return {};
    static const std::array<const char*, 6> units{"s", "ms", "\u00b5s", "ns", "ps", "fs"};
    std::size_t step = 0;
    double perSymbol = 1.0 / state.symbolRate;
    for (; perSymbol * farthest < 1.0 && step + 1 < units.size(); ++step)
        perSymbol *= 1000.0;
    return {perSymbol, QString::fromUtf8(units[step])};
}

QString PlotTexts::cursors() const
{
    const auto& at = m_state.cursors.places;
    const double time = at[Cursors::SecondX] - at[Cursors::FirstX];
    QString result;
    if (m_state.shape) {
        result = tr("%1 T, %2 T: %3 T")
                     .arg(number(at[Cursors::FirstX]), number(at[Cursors::SecondX]), number(time));
        if (m_state.symbolRate > 0.0)
            result +=
                QStringLiteral(" = %1 s, 1/\u0394t %2 Hz")
                    .arg(number(time / m_state.symbolRate), number(m_state.symbolRate / time));
    } else {
        result = QStringLiteral("I %1, %2: %3 %4")
                     .arg(number(at[Cursors::FirstX]), number(at[Cursors::SecondX]), number(time),
                          m_state.unit);
    }
    result +=
        QStringLiteral("   %1 %2, %3 %4: %5 %6")
            .arg(number(at[Cursors::FirstY]), m_state.unit, number(at[Cursors::SecondY]),
                 m_state.unit, number(at[Cursors::SecondY] - at[Cursors::FirstY]), m_state.unit);
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
    const QLocale locale;
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
        result += tr(", mask %1: %2 hits in %3 symbols")
                      .arg(verdict, locale.toString(qint64(m_state.data.mask->hitCount)),
                           locale.toString(qint64(m_state.data.mask->symbolCount)));
    }
    const ErrorVectors::Figures& errors = m_state.data.errors;
    if (errors.evm.isGiven() && errors.mer.isGiven())
        result +=
            tr(", EVM %1 %, MER %2 dB").arg(number(errors.evm.value), number(errors.mer.value));
    return m_state.isPaused ? result + tr(", paused") : result;
}

} // namespace density
