// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/PaneStates.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/window/Figures.h"
#include "workbench/window/ViewPanes.h"

#include <utility>

namespace {

constexpr std::size_t timePane = 0;
constexpr std::size_t eyePane = 1;
constexpr std::size_t iqPane = 2;
constexpr qint64 standingSeconds = 2;
constexpr qint64 longSeconds = 120;

} // namespace

/// Why there are no samples yet; empty when there are.
QString PaneStates::whatIsMissing(const SignalFeed& feed) const
{
    if (feed.hasPlayed() || !m_sinceStart.isValid() || !m_sinceStart.hasExpired(patienceMs))
        return QString();
    if (feed.hasEnded())
        return tr("the stream ended before the first sample");
    if (!feed.transport().isPlaying())
        return tr("paused before the first sample: play it with Space");
    return tr("waiting for samples");
}

/// What keeps the receiver from its work; empty when nothing does.
QString PaneStates::whatIsSearched(const SignalFeed& feed)
{
    for (const StageReport& report : feed.reports()) {
        if (report.isLocked && !*report.isLocked)
            return report.stage == StageReport::Stage::Squelch ? tr("squelch closed")
                                                               : tr("not locked");
    }
    return QString();
}

/// Why a view of symbols is empty although samples came; empty while that may change soon.
QString PaneStates::whyNoSymbols(const SignalFeed& feed, const QString& searched) const
{
    const bool isPlaying = feed.transport().isPlaying();
    const bool isLate = m_sinceStart.isValid() && m_sinceStart.hasExpired(patienceMs);
    if (!feed.hasPlayed() || (isPlaying && !isLate))
        return QString();
    if (!searched.isEmpty())
        return isPlaying ? tr("waiting for the receiver: %1").arg(searched)
                         : tr("no symbols: %1").arg(searched);
    if (!feed.eye().cut().hasSymbols())
        return tr("waiting for samples");
    return isPlaying ? tr("waiting for the clock of the symbols")
                     : tr("the clock of the symbols was not found");
}

/// For how long what plays has been old; empty while samples come. The status bar says why.
QString PaneStates::howLongItStands(const SignalFeed& feed)
{
    const std::int64_t position = feed.transport().position();
    const bool canStand = feed.hasPlayed() && feed.source().isLive && !feed.hasEnded() &&
                          feed.transport().isPlaying();
    if (!canStand || position != std::exchange(m_lastPosition, position) ||
        !m_sinceSample.isValid()) {
        m_sinceSample.start();
        return QString();
    }
    const qint64 seconds = m_sinceSample.elapsed() / 1000;
    if (seconds < standingSeconds)
        return QString();
    return seconds < longSeconds ? tr("stands still for %1 s").arg(seconds)
                                 : tr("stands still for %1 min").arg(seconds / 60);
}

void PaneStates::refresh(const SignalFeed& feed)
{
    const QString standing = howLongItStands(feed);
    const bool stands = !standing.isEmpty();
    const QString missing = stands ? standing : whatIsMissing(feed);
    const bool hasClock = feed.eye().cut().hasSymbols();
    const QString searched = whatIsSearched(feed);
    const QString why = whyNoSymbols(feed, searched);
    const bool isIqEmpty = feed.iq().showsDecisions() && feed.iq().isEmpty();
    m_panes.setNote(timePane, missing, stands);
    m_panes.setNote(eyePane, missing.isEmpty() && feed.eye().isEmpty() ? why : missing, stands);
    m_panes.setNote(iqPane, missing.isEmpty() && isIqEmpty ? why : missing, stands);

    const ReceiverSettings& receiver = feed.receiver();
    QString iq = feed.iq().showsDecisions() ? tr("decision instants") : tr("trajectory");
    if (receiver.isOn && receiver.demodulation == ReceiverSettings::Demodulation::Fm)
        iq = tr("before FM demodulation: trajectory");
    else if (receiver.isOn && receiver.demodulation == ReceiverSettings::Demodulation::Am)
        iq = tr("before AM demodulation: trajectory");
    if (!searched.isEmpty() && feed.iq().showsDecisions())
        iq = tr("%1, %2").arg(iq, searched);
    const Gate& gate = feed.gate();
    m_panes.setMode(timePane,
                    gate.isFixed()
                        ? tr("gate: %1").arg(figures::stretch(gate.fixedFrom(), gate.fixedTo()))
                        : QString());
    m_panes.setMode(eyePane,
                    hasClock ? searched
                             : tr("no symbol rate: cut every %1 samples").arg(EyeCut::fixedLength));
    m_panes.setMode(iqPane, iq);
}
