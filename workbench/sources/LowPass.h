// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

/// Bessel low-pass of fourth order: it rounds edges without ringing. Its gain at 0 Hz is 1.
class LowPass
{
public:
    /// @param corner  where it is 3 dB down, cycles a sample; taken as 1e-6 to 0.43.
    explicit LowPass(double corner);

    /// Filters the next sample. A sample that is not finite counts as 0; larger ones than 1e6 count
    /// as 1e6.
    double run(double input);

    /// R.m.s. of white noise after the filter relative to before.
    double noiseGain() const { return m_noiseGain; }
    /// Delay of a slow signal, samples.
    double delay() const { return m_delay; }
    /// Time in which a step settles, samples.
    int settleLength() const { return m_settleLength; }

private:
    /// Two poles and two zeros at half the sample rate, direct form II; what was put in before.
    struct Section
    {
        double a1 = 0.0, a2 = 0.0, gain = 0.0;
        double first = 0.0, second = 0.0;
    };

    std::array<Section, 2> m_sections;
    double m_noiseGain = 1.0;
    double m_delay = 0.0;
    int m_settleLength = 0;
};
