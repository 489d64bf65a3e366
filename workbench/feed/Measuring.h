// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/Measurement.h"
#include "workbench/pipeline/Background.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

class Gate;

/// Measures gates on a thread of its own, one at a time, with rests in between, so that it takes at
/// most a fifth of a core.
class Measuring : public QObject
{
    Q_OBJECT
public:
    explicit Measuring(QObject* parent = nullptr);

    /// Measures a gate at once, in the calling thread.
    static Measurement of(const Gate& gate, const Measurement::Setup& setup);
    /// Measures a gate as soon as possible, unless another one is requested by then.
    void request(const Gate& gate, const Measurement::Setup& setup);
    /// Drops the request; measured is not emitted before the next request.
    void cancel();

signals:
    void measured(const Measurement& measurement);

private:
    struct Request
    {
        std::vector<SignalBlockPtr> blocks;
        double from;
        double to;
        Measurement::Setup setup;
        int run;

        Measurement measure() const;
    };

    void startNext();

    std::optional<Request> m_next;
    int m_run = 0; // number of calls of cancel
    QTimer m_rest;
    Background m_work;
};
