// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include "workbench/sources/SampleFormat.h"
#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

/// A file or a live signal that was opened as a signal. RecordingOpener opens one.
struct Recording
{
    Q_DECLARE_TR_FUNCTIONS(Recording)
public:
    struct Options;

    static constexpr double minSampleRate = 1e-6;     ///< Hz, a sample in eleven days
    static constexpr double maxSampleRate = 1e12;     ///< Hz
    static constexpr double assumedSampleRate = 48e3; ///< Hz, where it is not known

    /// Checks that a file can be read at all.
    static Result<void> checkFile(const QString& fileName);
    /// Whether a sample rate is within the range above; false for NaN.
    static bool isSampleRate(double hertz)
    {
        return hertz >= minSampleRate && hertz <= maxSampleRate;
    }
    /// The rate, or an assumed one, with a notice, when it is not known.
    double orAssumed(std::optional<double> sampleRate);

    /// Facts about a signal, a line each.
    static QStringList describe(const SignalSource& source);

    std::unique_ptr<SignalSource> source; ///< not null once it is open
    QVector<Message> notices;             ///< what is amiss
    QStringList details;                  ///< what the file says beside its samples, a line each
};

/// Overrides what a file says, or adds to it.
struct Recording::Options
{
    std::optional<SampleFormat> format; ///< the file holds raw samples of this format
    std::optional<double> sampleRate;   ///< Hz, see isSampleRate
    int channelCount = 1;               ///< of raw samples
    QStringList columns; ///< of separated values, by number from 1 or by name; empty: the usual
    /// Called with the part of a long opening that is done, 0 to 1; returning false gives it up.
    /// May be empty.
    std::function<bool(double part)> goOn;
};
