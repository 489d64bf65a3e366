// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/app/Options.h"
#include "workbench/measure/Measurement.h"

#include <QCoreApplication>

/// Measures recordings without a display, and prints what they measure: a line of JSON for each.
class MeasureCommand
{
    Q_DECLARE_TR_FUNCTIONS(MeasureCommand)
public:
    explicit MeasureCommand(const Options& options)
        : m_options(options)
    {}

    /// @param say  takes what is amiss, a sentence with the file's name.
    /// @return whether all could be measured.
    bool run(const std::function<void(const QString&)>& say) const;

private:
    void findSymbolRate(SignalSource& source, Measurement::Setup& setup, QStringList& notes) const;
    Result<void> measure(const QString& file, const std::function<void(const QString&)>& say) const;

    const Options& m_options;
};
