// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Progress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

constexpr int showDelayMs = 500;
constexpr int periodMs = 100;
constexpr int steps = 1000;
constexpr int barWidth = 220;
constexpr unsigned closingTimeoutMs = 2000;

} // namespace

struct Progress::Job
{
    Done done;
    std::atomic<bool> isCancelled{false};
    std::atomic<double> part{-1.0};
};

Progress::Progress(QWidget* parent)
    : QFrame(parent)
    , m_what(new QLabel(this))
    , m_bar(new QProgressBar(this))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_what->setTextFormat(Qt::PlainText);
    m_bar->setFixedWidth(barWidth);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(tr("Progress"));
    auto* cancelButton = new QPushButton(tr("&Cancel"), this);
    connect(cancelButton, &QPushButton::clicked, this, &Progress::cancel);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 10, 4);
    row->addWidget(m_what, 1);
    row->addWidget(m_bar);
    row->addWidget(cancelButton);
    m_timer.setInterval(periodMs);
    connect(&m_timer, &QTimer::timeout, this, &Progress::showPart);
    hide();
}

Progress::~Progress()
{
    drop();
    for (auto* thread : findChildren<QThread*>()) {
        thread->disconnect(this);
        if (!thread->wait(closingTimeoutMs))
            thread->setParent(nullptr); // stuck in the system: not worth waiting for
    }
}

void Progress::run(const QString& what, const Work& work, const Done& done)
{
    drop();
    m_job = std::make_shared<Job>();
    m_job->done = done;
    QThread* thread = QThread::create([job = m_job, work] {
        work([&job](double part) {
            job->part = part;
            return !job->isCancelled;
        });
    });
    thread->setParent(this);
    connect(thread, &QThread::finished, this, [this, job = m_job, thread] {
        thread->deleteLater();
        finish(job, false);
    });
    m_what->setText(what);
    m_bar->setRange(0, 0);
    m_clock.start();
    m_timer.start();
    thread->start();
}

void Progress::cancel()
{
    if (const std::shared_ptr<Job> job = m_job) {
        job->isCancelled = true;
        finish(job, true);
    }
}

void Progress::drop()
{
    if (m_job)
        m_job->isCancelled = true;
    m_job.reset();
}

void Progress::finish(const std::shared_ptr<Job>& job, bool isCancelled)
{
    if (job != m_job)
        return;
    m_job.reset();
    m_timer.stop();
    hide();
    job->done(isCancelled); // may run the next
}

void Progress::showPart()
{
    const double part = m_job->part;
    if (part >= 0.0) {
        m_bar->setRange(0, steps);
        m_bar->setValue(static_cast<int>(std::lround(std::min(part, 1.0) * steps)));
    }
    setVisible(m_clock.hasExpired(showDelayMs));
}
