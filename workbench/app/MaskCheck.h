// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Counter.h"
#include "density/Mask.h"
#include "workbench/feed/EyeCutter.h"
#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QJsonObject>

/// Tests the symbols of a recording against a mask while it is received. Levels and the instant of
/// decision are those of the first 100,000 symbols, or of all where there are fewer.
class MaskCheck
{
    Q_DECLARE_TR_FUNCTIONS(MaskCheck)
public:
    /// Reads a file of a mask.
    static Result<density::Mask> read(const QString& file);

    /// @param from,to    s; samples outside do not count.
    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    MaskCheck(const density::Mask& mask, const SignalFormat& format, double from, double to,
              double bandwidth);

    /// The next block, after that of the last call.
    void add(const SignalBlock& block);
    /// Ends the test.
    /// @return name, verdict ("pass", "fail" or "incomplete"), hits, symbols, by_polygon, left_out,
    ///         reason; not before.
    QJsonObject finish();
    bool hasPassed() const { return m_hasPassed; }

private:
    void start();

    density::Mask m_mask;
    SignalFormat m_format;
    double m_from, m_to;
    EyeCutter m_cutter;
    density::Counter m_counter;
    QString m_reason; // why there is no test; empty: it runs, or was not started
    std::int64_t m_nextSymbol = 0;
    bool m_isStarted = false;
    bool m_hasPassed = false;
};
