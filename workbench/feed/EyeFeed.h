// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeCutter.h"
#include "workbench/feed/EyeValues.h"
#include "workbench/measure/EyeReadings.h"
#include "workbench/sources/SignalSource.h"

#include <QObject>
#include <QThread>

#include <memory>
#include <optional>
#include <vector>

/// Puts the traces of an eye into the values of the value tree: what is played comes in, is cut by
/// a thread of its own, and goes out in one notification a block. Where that thread falls behind,
/// blocks are left out, and the symbols' clock is found anew.
///
/// To be used on the GUI thread, whose event loop delivers the notifications.
class EyeFeed : public QObject
{
    Q_OBJECT
public:
    explicit EyeFeed(QObject* parent = nullptr);
    ~EyeFeed() override;

    /// Symbol rates that can be used at a sample rate, Bd.
    static double minSymbolRate(double sampleRate);
    static double maxSymbolRate(double sampleRate);

    /// Starts anew with a signal of a source.
    /// @param symbolRate  Bd; overrides what the source says, and is then recovered. One that
    ///                    cannot be used counts as unknown.
    void open(const SignalSource& source, std::optional<double> symbolRate);
    /// Starts anew with another signal of the source.
    void restart();
    /// Symbols of a trace; clamped to 1 to EyeCut::maxSymbolCount. Starts anew.
    void setSymbolCount(int count);
    /// Bandwidth of the low-pass before the eye, see EyeCut; clamped to 0 to EyeCut::maxBandwidth.
    /// Starts anew.
    void setBandwidth(double bandwidth);
    const EyeCut& cut() const { return m_cut; }

    /// The samples from a position on, after those of the last call or anywhere else.
    void take(std::int64_t position, std::vector<double> samples);
    /// Waits until fewer samples are on their way than are left out; false when it takes longer.
    bool makeRoom(std::chrono::milliseconds patience);
    /// Lets the views forget the traces that they have.
    void showNothing();
    /// Waits until all is notified that is known from the samples taken so far.
    void settle();
    /// No more samples come for now: as settle, up to the last trace that is whole.
    void finish();

    /// Whether no trace was notified yet since open or since the eye was set otherwise.
    bool isEmpty() const { return m_measured.empty(); }
    /// What the newest traces measure; none where there are no symbols, or too few.
    std::optional<EyeReadings> measure() const;
    /// Whether there are enough traces of symbols to be measured.
    bool hasEnough() const;
    /// Blocks left out since open.
    std::int64_t dropCount() const { return m_dropCount; }

    void setLevels(double lowest, double highest) { m_values.setY(lowest, highest); }
    /// Fits the levels to the newest traces, as many as an eye diagram keeps at first. Nothing
    /// while there are none, or where they are flat.
    void fitLevels();

private:
    template<class Work>
    void post(Work work);
    void notify(const std::vector<double>& samples, const std::vector<double>& markers);

    EyeValues m_values;
    EyeCut m_cut;
    std::vector<double> m_measured;      // newest traces, one after the other
    std::size_t m_traceLength = 0;       // of those
    std::unique_ptr<EyeCutter> m_cutter; // used by the thread only
    QThread m_thread;
    QObject m_worker;       // receives what the thread is to do
    int m_waitingCount = 0; // blocks that the thread has not cut yet
    std::int64_t m_dropCount = 0;
    int m_run = 0; // counts the signals; what comes late of an earlier one is dropped
};
