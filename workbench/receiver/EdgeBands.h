// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The bands of a signal about half the symbol rate, and about minus half of it, at some places a
/// symbol, each moved to frequency 0. What was filtered waits until enough of it can be taken at
/// once.
class EdgeBands
{
public:
    using Complex = std::complex<double>;
    struct Output
    {
        std::int64_t position = 0; ///< sample in its middle
        Complex upper, lower;
    };

    /// @param samplesPerSymbol  2 or more.
    explicit EdgeBands(double samplesPerSymbol);

    /// Takes the next sample, finite.
    void push(std::complex<float> sample)
    {
        m_samples.push_back(sample);
        if (m_samples.size() == m_room)
            mixWaiting();
    }
    /// Takes the next samples, finite.
    void push(const std::complex<float>* samples, std::size_t count);
    /// Samples that were taken.
    std::int64_t count() const
    {
        return m_mixedCount + static_cast<std::int64_t>(m_samples.size());
    }
    /// Samples after a place that its bands take.
    std::int64_t delay() const { return m_delay; }
    /// Whether enough samples wait for it to be worth while to take what they give.
    bool isDue() const { return m_mixed.size() > mostMixed + 2 * width * tapCount(); }
    /// What the samples give that were taken since the last call. It stays valid until the next.
    const std::vector<Output>& take();

private:
    static constexpr std::size_t turnLength = 256;
    static constexpr std::size_t width = 4;         // numbers of a mixed sample
    static constexpr std::size_t mostMixed = 16384; // numbers that wait for the filter

    std::size_t tapCount() const { return 2 * static_cast<std::size_t>(m_delay) + 1; }
    void mixWaiting();
    void mixDown(const std::complex<float>* samples, std::size_t count);
    void filter(std::size_t outputs);
    void dropUsed();

    double m_samplesPerSymbol;
    std::int64_t m_delay;      // of the low-pass that turns mixed samples into bands, samples
    std::int64_t m_stride;     // samples from output to output, of which few are needed
    std::vector<float> m_taps; // each four times
    std::vector<std::complex<float>> m_turns;   // from the start of a block of samples on
    std::vector<std::complex<float>> m_samples; // of the open block, not mixed...
    std::size_t m_room = turnLength;            // ...for which there is so much room
    std::int64_t m_mixedCount = 0;              // samples that were
    std::vector<float> m_mixed;                 // I and Q of the upper band and of the lower one...
    std::int64_t m_mixedFirst;                  // ...from this sample on
    std::int64_t m_center = 0;                  // of the next output
    std::vector<Output> m_outputs;
};
