// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QFrame>
#include <QTimer>

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
    /// Gives up what runs.
    ~Progress() override;

    /// Runs work on a thread of its own; then done, on this one. Cancelled work is not waited for:
    /// it must own what it uses. Work that still runs is cancelled, and its done is not called.
    /// @param what  "Opening x.wav".
    void run(const QString& what, const Work& work, const Done& done);
    bool isRunning() const { return m_job != nullptr; }

public slots:
    void cancel();

private:
    struct Job;

    void drop();
    void finish(const std::shared_ptr<Job>& job, bool isCancelled);
    void showPart();

    std::shared_ptr<Job> m_job; // of the work that runs
    QLabel* m_what;
    QProgressBar* m_bar;
    QTimer m_timer;
    QElapsedTimer m_clock;
};
