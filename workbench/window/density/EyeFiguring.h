// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "density/EyeFigures.h"
#include "workbench/pipeline/Background.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <vector>

namespace density {
class Counter;
} // namespace density

/// Figures of the traces that a density keeps, and the number of symbols that it has counted.
struct EyeFigured
{
    density::EyeFigures figures;
    density::TraceShape shape;
    std::int64_t keptCount = 0; ///< symbols that the figures are of, the newest ones
    std::int64_t allSymbols = 0;
    std::int64_t leftOut = 0;
    std::vector<std::vector<double>> crossings; ///< times of each eye's crossings, symbols
    std::vector<double> levels;                 ///< of all traces, at the instant of decision
};
using EyeFiguredPtr = std::shared_ptr<const EyeFigured>;

/// Measures the traces that a density keeps, one copy at a time, on a thread of its own. It rests
/// in between, so that it takes a fifth of a core at most.
class EyeFiguring : public QObject
{
    Q_OBJECT
public:
    explicit EyeFiguring(QObject* parent = nullptr);

    /// Measures the traces that a plot keeps, as soon as possible; figured brings the result.
    void request(density::DensityPlot& plot);
    /// Measures them at once, and waits for the result; null without a trace.
    static EyeFiguredPtr of(density::DensityPlot& plot);
    /// Forgets what was requested: figured does not come before the next request.
    void cancel();

signals:
    void figured(const EyeFiguredPtr& figured);

private:
    struct Request
    {
        density::KeptSignalPtr kept;
        density::TraceShape shape;
        std::int64_t allSymbols;
        std::int64_t leftOut;
        int run;

        EyeFiguredPtr measure() const;
    };
    static Request requestOf(density::Counter& counter, int run);

    void askNext();
    void start(const Request& request);

    QPointer<density::DensityPlot> m_next;
    bool m_isAsked = false; // a copy is on its way
    int m_run = 0;          // counts what was cancelled
    QTimer m_rest;
    Background m_work;
};
