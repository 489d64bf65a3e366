// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"

/// Tells bursts from what is between them by their level. It opens with 8 symbols, or a millisecond
/// where the symbol rate is not known, whose mean power reaches the threshold, and closes with as
/// many that are 3 dB below it. As many before and after them belong to the burst, so that its
/// edges are whole.
class BurstGate
{
public:
    struct Part
    {
        bool isOpen;
        std::vector<std::complex<float>> samples;
    };

    /// Prepares for samples of a rate, and starts anew. The settings have no flaw; without a
    /// squelch it is always open.
    void configure(const ReceiverSettings& settings, double sampleRate);
    /// Appends the parts that are known to be open or not.
    void process(std::vector<std::complex<float>> samples, std::vector<Part>& parts);
    /// No more samples come: appends those that waited.
    void finish(std::vector<Part>& parts);
    void reset();
    StageReport report() const;

private:
    struct Group
    {
        bool isOpen;
        std::vector<std::complex<float>> samples;
    };

    void close(std::vector<Part>& parts);
    void passOn(std::vector<Part>& parts);

    bool m_isOn = false;
    float m_threshold = 0.0F; // power
    std::size_t m_groupLength = 1;
    std::vector<std::complex<float>> m_open; // group
    std::vector<Group> m_groups;             // that wait for the next one
    bool m_wasOpen = false;                  // the group before those
    float m_power = 0.0F;                    // mean of the last one
    bool m_isOpen = false;
};
