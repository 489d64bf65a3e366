// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdint>

class SignalFeed;
class ViewPanes;

/// Tells over each view what it waits for while it is empty, what the signal lacks, or how long it
/// has stood still; and what it shows when that is not obvious.
class PaneStates
{
    Q_DECLARE_TR_FUNCTIONS(PaneStates)
public:
    static constexpr int timeoutMs = 700; ///< a signal usually comes sooner

    /// @param panes  time, eye and IQ, in this order.
    explicit PaneStates(ViewPanes& panes)
        : m_panes(panes)
    {}

    /// Another signal is there.
    void restart() { m_sinceStart.start(); }
    void refresh(const SignalFeed& feed);

private:
    static QString whatEyeNeeds(const SignalFeed& feed);
    static QString whatIqNeeds(const SignalFeed& feed);
    QString whatDensityNeeds(const SignalFeed& feed, std::size_t pane) const;
    static QString whatIsSearched(const SignalFeed& feed);
    QString howLongItStands(const SignalFeed& feed);
    QString whatIsMissing(const SignalFeed& feed) const;
    QString whyNoSymbols(const SignalFeed& feed, const QString& searched) const;

    void showNotes(const SignalFeed& feed, const QString& searched);
    void showModes(const SignalFeed& feed, const QString& searched);

    ViewPanes& m_panes;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceSample;
    std::int64_t m_lastPosition = -1;
};
