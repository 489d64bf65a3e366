// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/BurstGate.h"
#include "workbench/receiver/ChannelFilter.h"
#include "workbench/receiver/FrequencyShift.h"
#include "workbench/sources/ChannelChoice.h"

/// The part of a receiver that does not depend on symbols: from the values of a source to I and Q
/// of the channel, with bursts told from the stretches between them. As many samples come out as go
/// in.
class FrontEnd
{
public:
    /// @param valueCount  real numbers of a sample.
    void configure(const ReceiverSettings& settings, double sampleRate, int valueCount,
                   bool isComplex, const ChannelChoice& channel);
    /// Takes the next samples, with so many values as SignalSource::read gives them, and appends
    /// their parts. A value that is not finite counts as 0, one beyond 1e6 as 1e6; full scale is 1.
    void process(const double* values, std::size_t count, std::vector<BurstGate::Part>& parts);
    /// Takes samples that nobody needs any more: later ones use their memory.
    void reuse(std::vector<std::complex<float>>& samples) { m_block.samples.swap(samples); }
    /// Ends the signal: appends the samples that were held back.
    void finish(std::vector<BurstGate::Part>& parts);
    /// @param goesOn  as in SignalPath.
    void reset(bool goesOn);
    StageReport shiftReport() const { return m_shift.report(); }
    StageReport channelReport() const { return m_filter.report(); }
    StageReport squelchReport() const { return m_gate.report(); }

private:
    void takeEach(const double* value);
    void removeDc(std::vector<std::complex<float>>& samples);
    void settleDc();

    int m_valueCount = 1;
    bool m_isComplex = false;
    ChannelChoice m_channel;
    bool m_removesDc = false;
    std::size_t m_dcLength = 1;                 // samples over which the mean is taken
    std::vector<std::complex<float>> m_waiting; // for the first mean
    bool m_hasDc = false;
    std::complex<double> m_dc;
    BasebandBlock m_block; // on its way through the stages
    FrequencyShift m_shift;
    ChannelFilter m_filter;
    BurstGate m_gate;
};
