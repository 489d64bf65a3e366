// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/CarrierRecovery.h"
#include "workbench/receiver/Demodulator.h"
#include "workbench/receiver/FrequencyCorrection.h"
#include "workbench/receiver/FrontEnd.h"
#include "workbench/receiver/LevelControl.h"
#include "workbench/receiver/MatchedFilter.h"
#include "workbench/receiver/Resampler.h"
#include "workbench/receiver/SignalPath.h"
#include "workbench/receiver/TimingRecovery.h"
#include "workbench/receiver/TimingRefinement.h"

#include <array>

/// Receives a signal. Each burst is a separate run through the stages; stretches between bursts
/// become samples that are 0 and silenced.
class ReceivedPath : public SignalPath
{
public:
    /// @param settings  on and valid, with the symbol rate that is known.
    ReceivedPath(const SignalFacts& input, const ChannelChoice& channel,
                 const ReceiverSettings& settings);

    void process(const std::vector<double>& values, std::vector<SignalBlock>& blocks) override;
    void finish(std::vector<SignalBlock>& blocks) override;
    void reset(std::int64_t position, bool goesOn) override;

private:
    void takeParts(std::vector<BurstGate::Part>& parts, std::vector<SignalBlock>& blocks);
    void startRun();
    void pass(BasebandBlock& block, bool isEnd);
    void run(std::vector<std::complex<float>>& samples, std::vector<SignalBlock>& blocks);
    void endRun(std::vector<SignalBlock>& blocks);
    void takeReceived(BasebandBlock& block, bool isEnd, std::vector<SignalBlock>& blocks);
    template<class Iterator>
    void markEdge(Iterator first, Iterator last);
    void passOn(std::size_t count, std::vector<SignalBlock>& blocks);
    void silence(SignalBlock& block) const;
    void fillQuiet(std::vector<SignalBlock>& blocks);
    void push(SignalBlock block, std::vector<SignalBlock>& blocks);
    std::array<ReceiverStage*, 7> stages();
    std::vector<StageReport> reports(const SignalBlock& block) const;

    ReceiverSettings m_settings;
    bool m_showsQ;          // whether the time view shows Q
    double m_scale = 1.0;   // factor of demodulated samples: symbol rates to Hz
    std::size_t m_edge = 0; // symbols
    double m_timeOffset = 0.0;

    FrontEnd m_front;
    Demodulator m_demodulator;
    Resampler m_resampler;
    FrequencyCorrection m_frequency;
    MatchedFilter m_filter;
    TimingRecovery m_timing;
    CarrierRecovery m_carrier;
    TimingRefinement m_refinement;
    LevelControl m_level;

    std::vector<double> m_values;         // of the input, less than one frame
    std::vector<BurstGate::Part> m_parts; // of a frame
    std::int64_t m_taken = 0;             // samples of the input that went into parts
    std::int64_t m_position = 0;          // of the next sample of the output
    bool m_isRunning = false;
    double m_runTime = 0.0;           // s, where the run started
    std::int64_t m_runPosition = 0;   // of its first sample in the output
    BasebandBlock m_block;            // on its way through the stages
    BasebandBlock m_received;         // of the run, not passed on yet...
    std::int64_t m_receivedFirst = 0; // ...from this sample of it on
    bool m_isStart = true;            // of the run, whose first edge is not marked yet
};
