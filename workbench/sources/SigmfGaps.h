// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

/// Finds where samples are missing between the captures of a SigMF recording: one capture ends in
/// the file where the next one starts, but their indices in the signal, or their times, differ by
/// more than the samples of the first one.
class SigmfGaps
{
    Q_DECLARE_TR_FUNCTIONS(SigmfGaps)
public:
    struct Time
    {
        std::int64_t seconds; ///< since 1970
        double part;          ///< of a second after them
        double resolution;    ///< of its last digit, s
    };
    struct Capture
    {
        std::int64_t firstSample;                ///< in the file
        std::optional<std::int64_t> globalIndex; ///< of that sample in the signal
        std::optional<Time> time;                ///< of that sample
    };

    /// Reads a time such as 2026-11-25T12:00:00.25Z; nullopt for any other text.
    static std::optional<Time> time(const QString& text);

    /// Takes the next capture.
    void add(const Capture& capture) { m_captures.push_back(capture); }
    /// Which samples are missing; nullopt when none are known to be.
    /// @param sampleRate  Hz; none: captures without indices are not compared.
    std::optional<Message> notice(std::optional<double> sampleRate) const;

private:
    std::vector<Capture> m_captures;
};
