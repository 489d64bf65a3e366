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

/// What the traces measure that a density keeps, and how many symbols it has counted.
struct EyeFigured
{
    density::EyeFigures figures;
    density::TraceShape shape;
    std::int64_t keptCount = 0; ///< the newest symbols, which the figures are of
    std::int64_t allSymbols = 0;
    std::int64_t leftOut = 0;
    /// Of each eye: when crossings of its transitions come, symbols; of all: levels at the instant.
    std::vector<std::vector<double>> crossings;
    std::vector<double> levels;
};
using EyeFiguredPtr = std::shared_ptr<const EyeFigured>;

/// Measures the traces that a density keeps, on a thread of its own, one copy at a time, and rests
/// in between: it takes a fifth of a core at most.
class EyeFiguring : public QObject
{
    Q_OBJECT
public:
    explicit EyeFiguring(QObject* parent = nullptr);

    /// Measures what a plot keeps, as soon as possible.
    void request(density::DensityPlot& plot);
    /// Likewise, and waits for it. Null without a trace.
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
