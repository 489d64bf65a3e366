// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Counter.h"
#include "density/EyeFigures.h"
#include "density/Mask.h"
#include "workbench/measure/SymbolCutter.h"

#include <QCoreApplication>
#include <QJsonObject>

#include <optional>

/// Counts the symbols of a recording while it is received, measures their traces and, where there
/// is a mask, tests them. Levels and the instant of decision for the mask are those of the first
/// 100,000 symbols, or of all where there are fewer; the figures are of the last 100,000.
class DensityCheck
{
    Q_DECLARE_TR_FUNCTIONS(DensityCheck)
public:
    /// @param mask       none for figures only.
    /// @param from,to    s; symbols outside do not count.
    /// @param bandwidth  of a low-pass before, in symbol rates; 0 for none.
    DensityCheck(const std::optional<density::Mask>& mask, const SignalFormat& format, double from,
                 double to, double bandwidth);

    /// Takes the next block, in order.
    void add(const SignalBlock& block) { m_cutter.add(block); }
    /// Ends the signal. The operations below are valid after it.
    void finish();

    /// name, verdict ("pass", "fail" or "incomplete"), hits, symbols, by_polygon, left_out, reason.
    QJsonObject mask() const;
    /// symbols, left_out, figures_of (symbols), instant, levels, eyes, reason; each figure with
    /// value, interval ("low", "high") and the count that it rests on, or null with the reason.
    QJsonObject figures() const;
    /// Whether the mask was passed; true without a mask.
    bool hasPassed() const;

private:
    void take(const SymbolCutter::Place& place);
    void startTest();

    std::optional<density::Mask> m_mask;
    double m_from, m_to;
    density::Counter m_counter;
    std::int64_t m_leftOut = 0;
    QString m_reason; // why there is no test; empty: it runs, or was not started
    std::int64_t m_nextSymbol = 0;
    bool m_isStarted = false;
    SymbolCutter m_cutter;
};
