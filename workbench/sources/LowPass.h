// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

/// Low-pass of Bessel type and fourth order: it rounds edges and lets none ring. Its gain at rest
/// is 1.
class LowPass
{
public:
    /// @param corner  where it is 3 dB down, cycles a sample; taken as 1e-6 to 0.43.
    explicit LowPass(double corner);

    /// The next sample of the output. What is not finite counts as 0, what is
    /// beyond 1e6 as that.
    double run(double input);

    /// RMS of white noise after it, relative to before.
    double noiseGain() const { return m_noiseGain; }
    /// Samples by which it delays a slow signal.
    double delay() const { return m_delay; }
    /// Samples after which a step has settled.
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
