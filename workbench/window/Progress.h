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

/// A strip that shows a long operation and its progress, and lets the user cancel it, while the
/// window can be used. It appears after half a second only, so that quick operations are not
/// announced.
class Progress : public QFrame
{
    Q_OBJECT
public:
    /// Called by the work with the part that is done, 0 to 1, or less than 0 when it is not known;
    /// returns whether to continue.
    using GoOn = std::function<bool(double part)>;
    using Work = std::function<void(const GoOn& goOn)>;
    using Done = std::function<void(bool isCancelled)>;

    explicit Progress(QWidget* parent);

    /// Runs work on a thread of its own, and then done on this one. Does not wait for cancelled
    /// work, which must own what it uses. Work that still runs is cancelled, and its done is not
    /// called.
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
