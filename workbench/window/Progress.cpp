// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Progress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int showDelayMs = 500;
constexpr int periodMs = 100;
constexpr int steps = 1000;
constexpr int barWidth = 220;
// Do not wait longer for a thread that is stuck in the system.
constexpr std::chrono::seconds closing(2);

} // namespace

Progress::Progress(QWidget* parent)
    : QFrame(parent)
    , m_work(closing)
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

void Progress::run(const QString& what, const Work& work, const Done& done)
{
    m_done = done;
    m_part = std::make_shared<std::atomic<double>>(-1.0);
    m_work.start([this, work, part = m_part](const Background::IsWanted& isWanted) {
        work([&](double done) {
            *part = done;
            return isWanted();
        });
        return [this] { finish(false); };
    });
    m_what->setText(what);
    m_bar->setRange(0, 0);
    m_clock.start();
    m_timer.start();
}

void Progress::cancel()
{
    if (!isRunning())
        return;
    m_work.giveUp();
    finish(true);
}

void Progress::finish(bool isCancelled)
{
    m_timer.stop();
    hide();
    const Done done = std::exchange(m_done, nullptr);
    done(isCancelled); // may run the next
}

void Progress::showPart()
{
    const double part = *m_part;
    if (part >= 0.0) {
        m_bar->setRange(0, steps);
        m_bar->setValue(static_cast<int>(std::lround(std::min(part, 1.0) * steps)));
    }
    setVisible(m_clock.hasExpired(showDelayMs));
}
