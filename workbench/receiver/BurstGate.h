// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverStage.h"

/// Tells bursts from the stretches between them by their level. The gate opens with a group of 8
/// symbols, or a millisecond where the symbol rate is not known, whose mean power reaches the
/// threshold, and closes with a group 3 dB below it. The groups just before and after belong to the
/// burst, so that its edges are complete.
class BurstGate
{
public:
    struct Part
    {
        bool isOpen;
        std::vector<std::complex<float>> samples;
    };

    /// Prepares for samples of a rate, and starts anew. The settings must be valid; without a
    /// squelch the gate is always open.
    void configure(const ReceiverSettings& settings, double sampleRate);
    /// Takes samples, of which nothing need be left, and appends the parts whose state is known.
    void process(std::vector<std::complex<float>>& samples, std::vector<Part>& parts);
    /// Ends the signal: appends the samples that waited.
    void finish(std::vector<Part>& parts);
    void reset();
    StageReport report() const;

private:
    struct Group
    {
        bool isOpen;
        std::size_t count; ///< samples
    };

    void close(std::size_t count, std::vector<Part>& parts);
    void passOn(std::vector<Part>& parts);
    void dropPassed();

    bool m_isOn = false;
    float m_threshold = 0.0F; // power
    std::size_t m_groupLength = 1;
    std::vector<std::complex<float>> m_line; // the newest samples; of these...
    std::size_t m_passed = 0;                // ...so many were passed on, and...
    std::size_t m_closed = 0;                // ...so many are of groups that have ended
    std::vector<Group> m_groups;             // that have ended, and wait for the next one
    bool m_wasOpen = false;                  // state of the group before those
    float m_power = 0.0F;                    // mean of the last group
    bool m_isOpen = false;
};
