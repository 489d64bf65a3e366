// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalBlock.h"

#include <complex>
#include <vector>

/// Samples on their way through a receiver.
struct BasebandBlock
{
    std::vector<std::complex<float>> samples;
    /// Demodulated samples, one for each; empty before or without a demodulator.
    std::vector<float> demodulated;
    /// The symbols in them, once the clock is known; positions and times count from the start of
    /// the run.
    std::vector<Symbol> symbols;
    std::vector<ClockPoint> clock;

    void append(const BasebandBlock& other);
    /// Empties it, but keeps the memory.
    void clear();
};

/// Format of the samples between two stages.
struct BasebandFormat
{
    double sampleRate = 1.0;       ///< Hz
    bool isDemodulated = false;    ///< blocks also have demodulated samples
    bool isReal = false;           ///< Q is 0
    bool hasSymbolClock = false;   ///< the middle of symbol k is sample k * samplesPerSymbol
    double samplesPerSymbol = 0.0; ///< 0: not known
    double timeOffset = 0.0;       ///< s, of sample 0 after the start of the run
};

/// One stage of a receiver. All stages share this interface; none knows another stage.
class ReceiverStage
{
public:
    virtual ~ReceiverStage();

    /// Prepares for samples of a format, and starts anew. The settings must be valid.
    /// @return the format of the samples that come out.
    virtual BasebandFormat configure(const ReceiverSettings& settings,
                                     const BasebandFormat& format) = 0;
    /// Processes a block in place. More or fewer samples may come out, as a stage may hold samples
    /// back. Samples are finite.
    virtual void process(BasebandBlock& block) = 0;
    /// Ends the signal: adds to a block the samples that the stage has held back.
    virtual void finish(BasebandBlock& block);
    /// Forgets the signal.
    virtual void reset() = 0;
    virtual StageReport report() const = 0;
};
