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

    /// Whether a file can be read at all; else why not.
    static Result<void> checkFile(const QString& fileName);
    /// Whether signals are shown at a sample rate; false for NaN.
    static bool isSampleRate(double hertz)
    {
        return hertz >= minSampleRate && hertz <= maxSampleRate;
    }
    /// The rate, or where it is not known an assumed one and a notice of it.
    double orAssumed(std::optional<double> sampleRate);

    /// Facts about a signal, a line each.
    static QStringList describe(const SignalSource& source);

    std::unique_ptr<SignalSource> source; ///< not null once it is open
    QVector<Message> notices;             ///< what is amiss
    QStringList details;                  ///< what the file says beside its samples, a line each
};

/// What overrides or adds to what a file says.
struct Recording::Options
{
    std::optional<SampleFormat> format; ///< the file is raw samples of it
    std::optional<double> sampleRate;   ///< Hz, one that isSampleRate
    int channelCount = 1;               ///< of raw samples
    QStringList columns; ///< of separated values, by number from 1 or by name; empty: the usual
    /// Told how much of a long opening is done, 0 to 1; false gives it up. May be empty.
    std::function<bool(double part)> goOn;
};
