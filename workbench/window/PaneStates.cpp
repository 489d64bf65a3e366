// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/PaneStates.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/window/ViewPanes.h"

namespace {

constexpr std::size_t timePane = 0;
constexpr std::size_t eyePane = 1;
constexpr std::size_t iqPane = 2;

} // namespace

/// Why there are no samples yet; empty when there are.
QString PaneStates::whatIsMissing(const SignalFeed& feed) const
{
    if (feed.hasPlayed() || !m_sinceStart.isValid() || !m_sinceStart.hasExpired(patienceMs))
        return QString();
    if (feed.hasEnded())
        return tr("the stream ended before the first sample");
    if (!feed.isPlaying())
        return tr("paused before the first sample: play it with P");
    return tr("waiting for samples");
}

/// What keeps the receiver from its work; empty when nothing does.
QString PaneStates::whatIsSearched(const SignalFeed& feed)
{
    for (const StageReport& report : feed.receiverReports()) {
        if (report.isLocked && !*report.isLocked)
            return report.stage == StageReport::Stage::Squelch ? tr("squelch closed")
                                                               : tr("not locked");
    }
    return QString();
}

void PaneStates::refresh(const SignalFeed& feed)
{
    const QString missing = whatIsMissing(feed);
    const EyeCut& cut = feed.eye().cut();
    const bool hasClock = cut.clock != EyeCut::Clock::None;
    const bool isEyeLate = feed.eye().isEmpty() && feed.isPlaying() && m_sinceStart.isValid() &&
                           m_sinceStart.hasExpired(patienceMs);
    QString eye = missing;
    if (eye.isEmpty() && isEyeLate)
        eye = hasClock ? tr("waiting for the clock of the symbols") : tr("waiting for samples");
    const QString searched = whatIsSearched(feed);
    if (isEyeLate && !searched.isEmpty())
        eye = tr("waiting for the receiver: %1").arg(searched);
    m_panes.setNote(timePane, missing);
    m_panes.setNote(eyePane, eye);
    m_panes.setNote(iqPane, missing);

    const ReceiverSettings& receiver = feed.receiver();
    QString iq = feed.iq().showsDecisions() ? tr("decision instants") : tr("trajectory");
    if (receiver.isOn && receiver.demodulation == ReceiverSettings::Demodulation::Fm)
        iq = tr("before FM demodulation: trajectory");
    else if (receiver.isOn && receiver.demodulation == ReceiverSettings::Demodulation::Am)
        iq = tr("before AM demodulation: trajectory");
    if (!searched.isEmpty() && feed.iq().showsDecisions())
        iq = tr("%1, %2").arg(iq, searched);
    m_panes.setMode(eyePane,
                    hasClock ? searched
                             : tr("no symbol rate: cut every %1 samples").arg(EyeCut::fixedLength));
    m_panes.setMode(iqPane, iq);
}
