// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Background.h"

#include <QElapsedTimer>
#include <QFrame>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

class QLabel;
class QProgressBar;

/// A strip that says what takes long, how far it is, and lets the user give it up; the window works
/// on meanwhile. It shows itself after half a second only, so that what is quick is not announced.
class Progress : public QFrame
{
    Q_OBJECT
public:
    /// To be told now and then how much is done, 0 to 1, or less than 0 where that is not known;
    /// answers whether to go on.
    using GoOn = std::function<bool(double part)>;
    using Work = std::function<void(const GoOn& goOn)>;
    using Done = std::function<void(bool isCancelled)>;

    explicit Progress(QWidget* parent);

    /// Runs work on a thread of its own; then done, on this one. Cancelled work is not waited for:
    /// it must own what it uses. Work that still runs is cancelled, and its done is not called.
    /// @param what  "Opening x.wav".
    void run(const QString& what, const Work& work, const Done& done);
    bool isRunning() const { return m_work.isRunning(); }

public slots:
    void cancel();

private:
    void finish(bool isCancelled);
    void showPart();

    Background m_work;
    Done m_done;
    std::shared_ptr<std::atomic<double>> m_part; // as the work tells
    QLabel* m_what;
    QProgressBar* m_bar;
    QTimer m_timer;
    QElapsedTimer m_clock;
};
