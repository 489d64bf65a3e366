// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Background.h"

#include <QDeadlineTimer>
#include <QThread>

#include <atomic>
#include <utility>

struct Background::Job
{
    std::atomic<bool> isWanted{true};
    Use use; // of the thread, until it has finished
};

Background::Background(std::optional<std::chrono::milliseconds> closing)
    : m_closing(closing)
{}

Background::~Background()
{
    giveUp();
    const QDeadlineTimer deadline =
        m_closing ? QDeadlineTimer(*m_closing) : QDeadlineTimer(QDeadlineTimer::Forever);
    for (auto* thread : findChildren<QThread*>()) {
        thread->disconnect(this);
        if (!thread->wait(deadline))
            thread->setParent(nullptr);
    }
}

void Background::start(Work work)
{
    giveUp();
    m_job = std::make_shared<Job>();
    QThread* thread = QThread::create([job = m_job, work = std::move(work)] {
        job->use = work([&job] { return job->isWanted.load(); });
    });
    thread->setParent(this);
    connect(thread, &QThread::finished, this, [this, job = m_job, thread] {
        thread->deleteLater();
        if (job != m_job)
            return;
        m_job.reset();
        if (const Use use = std::move(job->use))
            use(); // may start the next, or destroy this
    });
    thread->start();
}

void Background::giveUp()
{
    if (m_job)
        m_job->isWanted = false;
    m_job.reset();
}
