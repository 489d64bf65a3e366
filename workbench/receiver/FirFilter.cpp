// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FirFilter.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::size_t vectors = 4;               // that are taken at once
constexpr std::size_t pairs = floatsWidth / 2;   // samples of a vector
constexpr std::size_t together = 16 * pairs;     // outputs for which samples are copied
constexpr std::size_t lineSize = sizeof(Floats); // of the memory next to the processor
constexpr std::size_t copyCount = pairs;         // of samples, each one sample further on

/// Outputs: each is the sum of the taps times the samples from it on. Each sum adds in the order of
/// the taps; they are taken side by side because one alone would wait for each of its additions.
ORVANE_WIDEST void filter(const std::vector<float>& taps, const std::size_t* places, float scale,
                          const float* copies, float* output)
{
    constexpr std::size_t step = vectors * floatsWidth;
    for (std::size_t first = 0; first < 2 * together; first += step) {
        Floats sums[vectors] = {};
        for (std::size_t k = 0; k < taps.size(); ++k) {
            const float* place = copies + places[k] + first;
            const float tap = taps[k];
            ORVANE_UNROLLED
            for (std::size_t n = 0; n < vectors; ++n) {
                Floats factors;
                load(place + n * floatsWidth, factors);
                sums[n] += tap * factors;
            }
        }
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < vectors; ++n)
            store(scale * sums[n], output + first + n * floatsWidth);
    }
}

} // namespace

// A vector that lies in two lines of memory takes twice as long to load. So samples are copied, one
// copy for each place of a sample in a vector: every tap finds a copy where its vectors are lines.
FirFilter::FirFilter(const std::vector<float>& taps, float scale, std::size_t every)
    : m_taps(taps.rbegin(), taps.rend())
    , m_scale(scale)
    , m_every(every)
    , m_length(2 * (together + (taps.size() / every / pairs + 1) * pairs))
    , m_copies(every * copyCount * m_length + floatsWidth)
{
    for (std::size_t k = 0; k < taps.size(); ++k) {
        const std::size_t sample = k / every;
        const std::size_t copy = k % every * copyCount + sample % copyCount;
        m_places.push_back(copy * m_length + 2 * (sample - sample % copyCount));
    }
    reset();
}

/// Copies samples: of every second one, and of those between, where only every second output is
/// wanted.
void FirFilter::spread(const std::complex<float>* samples, float* copies) const
{
    const std::size_t needed = together + (m_taps.size() - 1) / m_every;
    for (std::size_t stream = 0; stream < m_every; ++stream) {
        float* const first = copies + stream * copyCount * m_length;
        for (std::size_t k = 0; k < needed; ++k) {
            const std::complex<float> sample = samples[stream + k * m_every];
            first[2 * k] = sample.real();
            first[2 * k + 1] = sample.imag();
        }
        for (std::size_t copy = 1; copy < copyCount; ++copy)
            std::copy(first + 2 * copy, first + 2 * needed, first + copy * m_length);
    }
}

void FirFilter::process(std::vector<std::complex<float>>& samples)
{
    const std::size_t count = samples.size();
    const std::size_t kept = m_taps.size() - 1;
    const std::size_t wanted = (count - std::min(m_skip, count) + m_every - 1) / m_every;
    const std::size_t groups = (wanted + together - 1) / together;
    // Outputs that no one wants may take what lies there from before.
    const std::size_t taken = m_skip + (groups * together + 1) * m_every;
    m_line.resize(std::max(m_line.size(), kept + std::max(taken, count)));
    std::copy(samples.begin(), samples.end(), m_line.begin() + static_cast<std::ptrdiff_t>(kept));
    samples.resize(groups * together);
    const auto behind = reinterpret_cast<std::uintptr_t>(m_copies.data()) % lineSize;
    float* const copies = m_copies.data() + (lineSize - behind) % lineSize / sizeof(float);
    for (std::size_t group = 0; group < groups; ++group) {
        spread(m_line.data() + m_skip + group * together * m_every, copies);
        filter(m_taps, m_places.data(), m_scale, copies,
               reinterpret_cast<float*>(samples.data() + group * together));
    }
    samples.resize(wanted);
    m_skip += wanted * m_every - count;
    std::copy_n(m_line.begin() + static_cast<std::ptrdiff_t>(count), kept, m_line.begin());
}

void FirFilter::reset()
{
    m_line.assign(m_taps.size() - 1, 0.0F);
    m_skip = 0;
}
