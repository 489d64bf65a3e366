// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/PaneStates.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/player/Figures.h"
#include "workbench/player/Units.h"
#include "workbench/window/panes/ViewPanes.h"

#include <utility>

namespace {

constexpr std::size_t timePane = 0;
constexpr std::size_t eyePane = 1;
constexpr std::size_t iqPane = 2;
constexpr qint64 standingSeconds = 2;
constexpr qint64 longSeconds = 120;

} // namespace

/// Why there are no samples yet; empty when there are some.
QString PaneStates::whatIsMissing(const SignalFeed& feed) const
{
    if (feed.hasPlayed() || !m_sinceStart.isValid() || !m_sinceStart.hasExpired(timeoutMs))
        return QString();
    if (feed.hasEnded())
        return tr("the stream ended before the first sample");
    if (!feed.transport().isPlaying())
        return tr("paused before the first sample: play it with Space");
    return tr("waiting for samples");
}

/// Why the receiver cannot work; empty when it can.
QString PaneStates::whatIsSearched(const SignalFeed& feed)
{
    for (const StageReport& report : feed.reports()) {
        if (report.isLocked && !*report.isLocked)
            return report.stage == StageReport::Stage::Squelch ? tr("squelch closed")
                                                               : tr("not locked");
    }
    return QString();
}

/// Why a view of symbols is empty although samples came; empty while symbols may still come soon.
QString PaneStates::whyNoSymbols(const SignalFeed& feed, const QString& searched) const
{
    const bool isPlaying = feed.transport().isPlaying();
    const bool isLate = m_sinceStart.isValid() && m_sinceStart.hasExpired(timeoutMs);
    if (!feed.hasPlayed() || (isPlaying && !isLate))
        return QString();
    if (!searched.isEmpty())
        return isPlaying ? tr("waiting for the receiver: %1").arg(searched)
                         : tr("no symbols: %1").arg(searched);
    return isPlaying ? tr("waiting for the clock of the symbols")
                     : tr("the clock of the symbols was not found");
}

/// How long the signal has stood still; empty while samples come. The status bar tells why.
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

/// What the signal lacks for an eye; empty when it lacks nothing.
QString PaneStates::whatEyeNeeds(const SignalFeed& feed)
{
    if (feed.eye().cut().hasSymbols())
        return QString();
    return feed.symbolRate() ? tr("An eye needs some samples of each symbol: give another symbol "
                                  "rate under Parameters")
                             : tr("An eye needs the symbol rate: give it under Parameters, or let "
                                  "it be estimated there");
}

/// What the signal lacks for a constellation, likewise.
QString PaneStates::whatIqNeeds(const SignalFeed& feed)
{
    if (feed.iq().hasQ())
        return QString();
    return tr("A constellation needs I and Q, but this signal has one value a sample. Where it is "
              "on a carrier, the receiver (F8) makes I and Q of it");
}

/// What counting symbols takes beside what the diagram needs.
QString PaneStates::whatDensityNeeds(const SignalFeed& feed, std::size_t pane) const
{
    if (!m_panes.panes()[pane].cover)
        return QString();
    if (pane == eyePane && !(feed.format().samplesPerSymbol > 1.0))
        return tr("The density of an eye needs more than one sample of each symbol");
    if (pane == iqPane && !feed.iq().knowsSymbols())
        return tr("The density of a constellation counts symbols: choose a modulation for the "
                  "receiver (F8) and give the symbol rate");
    return QString();
}

void PaneStates::showNotes(const SignalFeed& feed, const QString& searched)
{
    const QString standing = howLongItStands(feed);
    const bool stands = !standing.isEmpty();
    const QString missing = stands ? standing : whatIsMissing(feed);
    const QString why = whyNoSymbols(feed, searched);
    m_panes.setNote(timePane, missing, stands);
    const auto show = [&](std::size_t pane, const QString& needed, bool isEmpty) {
        m_panes.setIdle(pane, !needed.isEmpty());
        const QString without = missing.isEmpty() && isEmpty ? why : missing;
        const QString counting = needed.isEmpty() ? whatDensityNeeds(feed, pane) : needed;
        m_panes.setNote(pane, counting.isEmpty() ? without : counting,
                        stands && counting.isEmpty());
    };
    show(eyePane, whatEyeNeeds(feed), feed.eye().isEmpty());
    show(iqPane, whatIqNeeds(feed), feed.iq().showsDecisions() && feed.iq().isEmpty());
}

void PaneStates::showModes(const SignalFeed& feed, const QString& searched)
{
    const bool isFm = !feed.levelUnit().isEmpty();
    const Gate& gate = feed.gate();
    QStringList time;
    if (gate.isFixed())
        time += tr("gate: %1").arg(figures::stretch(gate.fixedFrom(), gate.fixedTo()));
    if (isFm)
        time += tr("frequency in %1").arg(feed.levelUnit());
    time += feed.scale().unit == TimeScale::Unit::Symbol
                ? tr("time in symbols")
                : tr("time in %1").arg(units::sign(feed.scale()));
    m_panes.setMode(timePane, {time.join(QStringLiteral(", ")), time.back()});

    QStringList eye, shorter;
    if (feed.eye().cut().hasSymbols()) {
        if (!searched.isEmpty())
            eye += searched;
        const int count = feed.eye().cut().symbolCount;
        eye += count == 1 ? tr("0 to 1: one symbol") : tr("0 to 1: %1 symbols").arg(count);
        shorter = QStringList{count == 1 ? tr("one symbol") : tr("%1 symbols").arg(count),
                              QStringLiteral("%1\u2009T").arg(count)};
    }
    m_panes.setMode(eyePane, QStringList{eye.join(QStringLiteral(", "))} + shorter);

    QString iq = feed.iq().showsDecisions() ? tr("decision instants") : tr("trajectory");
    const QString brief = feed.iq().showsDecisions() ? tr("symbols") : tr("trajectory");
    if (feed.format().isDemodulated)
        iq = isFm ? tr("before FM demodulation: trajectory")
                  : tr("before AM demodulation: trajectory");
    if (!searched.isEmpty() && feed.iq().showsDecisions())
        iq = tr("%1, %2").arg(iq, searched);
    m_panes.setMode(iqPane, feed.iq().hasQ() ? QStringList{iq, brief} : QStringList{QString()});
}

void PaneStates::refresh(const SignalFeed& feed)
{
    const QString searched = whatIsSearched(feed);
    showNotes(feed, searched);
    showModes(feed, searched);
}
