// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Mask.h"
#include "workbench/app/Options.h"
#include "workbench/measure/Measurement.h"

#include <QCoreApplication>

#include <limits>

class DensityCheck;
class Receiver;

/// Measures recordings without a display, and prints their figures: a line of JSON for each.
class MeasureCommand
{
    Q_DECLARE_TR_FUNCTIONS(MeasureCommand)
public:
    explicit MeasureCommand(const Options& options)
        : m_options(options)
    {}

    /// @param say  takes messages, a sentence with the file's name each.
    /// @return exit code: 1 when a recording could not be measured, 3 when one did not pass its
    ///         mask, else 0.
    int run(const std::function<void(const QString&)>& say) const;

private:
    struct Range
    {
        double from = 0.0; // s
        double to = std::numeric_limits<double>::infinity();
    };

    Result<Range> rangeOf(const SignalSource& source) const;
    void findSymbolRate(SignalSource& source, Measurement::Setup& setup, QStringList& notes) const;
    void describe(const SignalSource& source, const ReceiverSettings& settings,
                  const Receiver& receiver, Measurement::Setup& setup) const;
    /// @param mask  may be null.
    /// @return whether it passed the mask, or there is none.
    Result<bool> measure(const QString& file, const density::Mask* mask,
                         const std::function<void(const QString&)>& say) const;
    /// @param check  where there is a mask or figures of a density are wanted; else null.
    void print(const QString& file, const Measurement& measurement, const DensityCheck* check,
               bool hasMask) const;

    const Options& m_options;
};
