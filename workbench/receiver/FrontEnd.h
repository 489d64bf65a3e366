// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/BurstGate.h"
#include "workbench/receiver/ChannelFilter.h"
#include "workbench/receiver/FrequencyShift.h"
#include "workbench/sources/ChannelChoice.h"

/// What a receiver does before it needs to know of symbols: from the values of a source to I and Q
/// of the channel, its bursts told from what is between them. As many samples come out as go in.
class FrontEnd
{
public:
    /// @param valueCount  real numbers of a sample.
    void configure(const ReceiverSettings& settings, double sampleRate, int valueCount,
                   bool isComplex, const ChannelChoice& channel);
    /// Appends the parts of the next samples, values as SignalSource::read gives them. What is not
    /// finite counts as 0, what is beyond 1e6 as that: full scale is 1.
    void process(const std::vector<double>& values, std::vector<BurstGate::Part>& parts);
    /// No more samples come: appends those that were held back.
    void finish(std::vector<BurstGate::Part>& parts);
    /// @param goesOn  as in SignalPath.
    void reset(bool goesOn);
    StageReport shiftReport() const { return m_shift.report(); }
    StageReport channelReport() const { return m_filter.report(); }
    StageReport squelchReport() const { return m_gate.report(); }

private:
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
    FrequencyShift m_shift;
    ChannelFilter m_filter;
    BurstGate m_gate;
};
