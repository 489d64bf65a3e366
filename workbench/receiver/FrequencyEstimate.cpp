// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrequencyEstimate.h"

#include "workbench/receiver/ModulationTable.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double range = 1.0;          // cycles a symbol: offsets that are searched on either side
constexpr double reach = 2.2;          // half of the spectrum that is examined, symbol rates
constexpr double bandWidth = 1.0 / 64; // symbol rates
constexpr double pulseStep = 1.0 / 256;
constexpr double coarseStep = 1.0 / 128;
constexpr double leastFloor = 1e-3; // of the signal: a fainter floor may come from the pulse
constexpr double sureMargin = 30.0;
constexpr double clearlyStronger = 1.2; // a line, to be preferred...
constexpr double surelyStronger = 2.5;  // ...and without doubt
constexpr double clearMargin = 6.0;     // of the logarithms of likelihoods
constexpr double significance = 7.0;    // beyond the highest of as many lines of noise
constexpr double edgeBand = 0.15;       // symbol rates, on either side of half the symbol rate
constexpr double usualRollOff = 0.5;    // of an unknown pulse

double raisedCosine(double frequency, double rollOff)
{
    const double f = std::abs(frequency);
    const double flat = 0.5 * (1.0 - rollOff);
    if (f <= flat)
        return 1.0;
    return f >= 1.0 - flat ? 0.0 : 0.5 + 0.5 * std::cos(pi * (f - flat) / rollOff);
}

std::vector<double> hannWindow(std::size_t count)
{
    std::vector<double> window(count);
    for (std::size_t k = 0; k < count; ++k)
        window[k] = 0.5 - 0.5 * std::cos(2.0 * pi * (static_cast<double>(k) + 0.5) /
                                         static_cast<double>(count));
    return window;
}

/// Spectrum of symmetric taps, an odd number of them, at a frequency in cycles a sample.
double spectrumAt(const std::vector<float>& taps, double frequency)
{
    const std::size_t middle = taps.size() / 2;
    const double step = 2.0 * std::cos(2.0 * pi * frequency);
    double cosine = 1.0, next = 0.5 * step; // of one multiple of the angle, and of the one after
    double sum = double{taps[middle]};
    for (std::size_t k = 1; k <= middle; ++k) {
        sum += (double{taps[middle - k]} + double{taps[middle + k]}) * next;
        const double later = step * next - cosine;
        cosine = next;
        next = later;
    }
    return sum;
}

} // namespace

FrequencyEstimate::FrequencyEstimate(ReceiverSettings::Modulation modulation, int perSymbol,
                                     const std::vector<float>& taps)
    : m_modulation(modulation)
    , m_perSymbol(perSymbol)
{
    constexpr auto last = static_cast<int>((reach + range) / pulseStep) + 1;
    for (int step = 0; step <= last; ++step) {
        const double f = step * pulseStep;
        if (taps.empty()) {
            m_pulse.push_back(raisedCosine(f, usualRollOff));
            continue;
        }
        const double sum = spectrumAt(taps, f / m_perSymbol);
        m_pulse.push_back(f < 0.5 * m_perSymbol ? sum * sum : 0.0);
    }
    const double most = *std::max_element(m_pulse.begin(), m_pulse.end());
    for (double& power : m_pulse)
        power /= most;
}

double FrequencyEstimate::pulseAt(double frequency) const
{
    const double place = std::abs(frequency) / pulseStep;
    const auto index = static_cast<std::size_t>(place);
    if (index + 1 >= m_pulse.size())
        return 0.0;
    const double part = place - static_cast<double>(index);
    return m_pulse[index] + part * (m_pulse[index + 1] - m_pulse[index]);
}

/// Mean powers of bands, from -reach to reach.
std::vector<double> FrequencyEstimate::bandsOf(const std::vector<Complex>& spectrum) const
{
    const auto size = static_cast<double>(spectrum.size());
    const auto count = static_cast<int>(std::min(reach, 0.49 * m_perSymbol) / bandWidth);
    std::vector<double> bands;
    for (int band = -count; band <= count; ++band) {
        const double first = (band - 0.5) * bandWidth / m_perSymbol * size;
        const double last = (band + 0.5) * bandWidth / m_perSymbol * size;
        double sum = 0.0;
        const auto begin = static_cast<std::int64_t>(std::ceil(first));
        const auto end = std::max(static_cast<std::int64_t>(std::ceil(last)), begin + 1);
        for (std::int64_t bin = begin; bin < end; ++bin) {
            const auto wrapped = bin < 0 ? bin + static_cast<std::int64_t>(spectrum.size()) : bin;
            sum += std::norm(spectrum[static_cast<std::size_t>(wrapped)]);
        }
        bands.push_back(sum / static_cast<double>(end - begin));
    }
    return bands;
}

/// Logarithm of the likelihood of an offset, for each bin of a band, with the noise floor and the
/// signal power that the bands then have.
double FrequencyEstimate::likelihood(const std::vector<double>& bands, double offset) const
{
    const auto middle = static_cast<double>(bands.size() / 2);
    double crossed = 0.0, square = 0.0, pulses = 0.0, powers = 0.0;
    const auto count = static_cast<double>(bands.size());
    double noise = 0.0, empty = 0.0;
    std::vector<double> pulseIn(bands.size());
    for (std::size_t k = 0; k < bands.size(); ++k) {
        const double pulse = pulseAt((static_cast<double>(k) - middle) * bandWidth - offset);
        pulseIn[k] = pulse;
        pulses += pulse;
        powers += bands[k];
        crossed += pulse * bands[k];
        square += pulse * pulse;
        if (pulse < 1e-3) {
            noise += bands[k];
            empty += 1.0;
        }
    }
    double floor = empty > 0.0 ? noise / empty : 0.0;
    const double signal =
        std::max((crossed - floor * pulses) / std::max(square, 1e-9), 1e-12 * powers / count);
    floor = std::max(floor, leastFloor * signal);
    double sum = 0.0, before = 1.0; // one logarithm for two bands
    for (std::size_t k = 0; k < bands.size(); ++k) {
        const double expected = floor + signal * pulseIn[k];
        sum -= bands[k] / expected;
        before = k % 2 == 0 ? expected : before * expected;
        if (k % 2 == 1 || k + 1 == bands.size())
            sum -= std::log(before);
    }
    return sum;
}

/// The same for noise alone.
double FrequencyEstimate::flatLikelihood(const std::vector<double>& bands)
{
    const auto count = static_cast<double>(bands.size());
    double mean = 0.0;
    for (const double band : bands)
        mean += band / count;
    return -count * (std::log(std::max(mean, 1e-300)) + 1.0);
}

FrequencyEstimate::Result FrequencyEstimate::of(const std::vector<Sample>& samples)
{
    Result result;
    std::vector<Complex> spectrum(samples.begin(), samples.end());
    const std::size_t count = spectrum.size();
    if (m_window.size() != count)
        m_window = hannWindow(count); // the ends must not leak over the spectrum
    double energy = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        energy += std::norm(spectrum[k]);
        spectrum[k] *= m_window[k];
    }
    if (!(energy > 0.0))
        return result;
    m_transforms.forward(spectrum);
    const std::vector<double> bands = bandsOf(spectrum);
    // Number of independent bins of a band.
    const double perBand =
        std::max(0.5 * bandWidth / m_perSymbol * static_cast<double>(count), 0.25);
    double coarse = 0.0;
    double best = -1e300;
    constexpr auto last = static_cast<int>(range / coarseStep);
    for (int step = -last; step <= last; ++step) {
        const double offset = step * coarseStep;
        const double here = likelihood(bands, offset);
        if (here > best) {
            best = here;
            coarse = offset;
        }
    }
    result.offset = coarse;
    const Line line = lineOf(spectrum, coarse);
    if (line.strength == 0.0) { // the spectrum alone may be clear enough
        result.isFound = perBand * (best - flatLikelihood(bands)) > sureMargin;
        return result;
    }
    result.isFound = true;
    result.aliasDistance = 1.0 / modulations::of(m_modulation).power;
    std::vector<std::pair<double, double>> fits; // likelihood and offset
    for (int alias = -2; alias <= 2; ++alias) {
        const double offset = coarse + line.offset + alias * result.aliasDistance;
        fits.emplace_back(perBand * likelihood(bands, offset), offset);
    }
    std::sort(fits.rbegin(), fits.rend());
    result.offset = fits[0].second;
    if (fits[0].first - fits[1].first > sureMargin)
        return result;
    // A filter that is off the band also weakens the line.
    const double first = lineOf(spectrum, fits[0].second).strength;
    const double second = lineOf(spectrum, fits[1].second).strength;
    if (second > clearlyStronger * first)
        result.offset = fits[1].second;
    result.mayBeAlias = std::max(first, second) < surelyStronger * std::min(first, second) &&
                        fits[0].first - fits[1].first < clearMargin;
    return result;
}

/// The signal in time, moved down by a whole number of bins and weighted in its spectrum.
template<class Weight>
std::vector<FrequencyEstimate::Complex>
FrequencyEstimate::filtered(const std::vector<Complex>& spectrum, std::int64_t shift, Weight weight)
{
    const auto size = static_cast<std::int64_t>(spectrum.size());
    std::vector<Complex> result(spectrum.size());
    for (std::int64_t bin = 0; bin < size; ++bin) {
        const std::int64_t from = ((bin + shift) % size + size) % size;
        const double f = static_cast<double>(bin < size / 2 ? bin : bin - size) /
                         static_cast<double>(size) * m_perSymbol;
        result[static_cast<std::size_t>(bin)] =
            spectrum[static_cast<std::size_t>(from)] * weight(f);
    }
    m_transforms.backward(result);
    double square = 0.0;
    for (const Complex& value : result)
        square += std::norm(value) / static_cast<double>(spectrum.size());
    for (Complex& value : result)
        value /= std::sqrt(std::max(square, 1e-300));
    return result;
}

/// The line around an offset.
FrequencyEstimate::Line FrequencyEstimate::lineOf(const std::vector<Complex>& spectrum,
                                                  double coarse)
{
    const Modulation& modulation = modulations::of(m_modulation);
    const std::size_t count = spectrum.size();
    const double binsPerCycle = static_cast<double>(count) / m_perSymbol;
    const std::int64_t shift = std::llround(coarse * binsPerCycle);
    const double rest = coarse - static_cast<double>(shift) / binsPerCycle;
    const auto perSymbol = static_cast<std::size_t>(m_perSymbol);
    std::size_t padded = 16;
    while (padded < 4 * (count / perSymbol))
        padded *= 2;
    const double perBin = 1.0 / static_cast<double>(padded) / modulation.power;
    double most = std::log(static_cast<double>(count)) + significance;
    if (modulation.isOffset) {
        const SpectralPeak peak = edgeLineOf(spectrum, shift, padded, most);
        return {peak.place * perBin - rest, peak.strength};
    }
    const auto signal =
        filtered(spectrum, shift, [this](double f) { return std::sqrt(pulseAt(f)); });
    Line result;
    for (std::size_t phase = 0; phase < perSymbol; ++phase) {
        std::vector<Complex> line(padded);
        double energy = 0.0;
        Complex turn = 1.0;
        for (std::size_t k = 0; phase + k * perSymbol < count; ++k) {
            Complex value = signal[phase + k * perSymbol];
            if (!modulation.hasAmplitudes) // the distance from the circle tells no more
                value *= std::min(std::abs(value), 1.0) / std::max(std::abs(value), 1e-9);
            line[k] = turn;
            for (unsigned n = 0; n < modulation.power; ++n)
                line[k] *= value;
            turn = modulation.alternates ? -turn : turn;
            energy += std::norm(line[k]);
        }
        m_transforms.forward(line);
        std::vector<double> powers(padded);
        for (std::size_t bin = 0; bin < padded; ++bin)
            powers[bin] = std::norm(line[bin]) / std::max(energy, 1e-300);
        const SpectralPeak peak = SpectralPeak::of(powers);
        if (peak.strength > most) {
            most = peak.strength;
            result = {peak.place * perBin - rest, peak.strength};
        }
    }
    return result;
}

/// The line of an offset modulation; its strength is 0 when there is none. In the envelope the
/// lines of I and Q cancel. The squares of the bands around half the symbol rate above and below
/// the carrier have one line each, at twice the carrier's offset once the bands are moved there.
SpectralPeak FrequencyEstimate::edgeLineOf(const std::vector<Complex>& spectrum, std::int64_t shift,
                                           std::size_t padded, double least)
{
    const double binsPerCycle = static_cast<double>(spectrum.size()) / m_perSymbol;
    const auto half = static_cast<std::int64_t>(std::llround(0.5 * binsPerCycle));
    std::vector<double> powers(padded);
    for (const std::int64_t edge : {half, -half}) {
        const auto band = filtered(spectrum, shift + edge, [](double f) {
            return std::abs(f) < edgeBand ? 0.5 + 0.5 * std::cos(pi * f / edgeBand) : 0.0;
        });
        std::vector<Complex> line(padded);
        double energy = 0.0;
        const auto perSymbol = static_cast<std::size_t>(m_perSymbol);
        for (std::size_t k = 0; k * perSymbol < band.size(); ++k) {
            line[k] = band[k * perSymbol] * band[k * perSymbol];
            energy += std::norm(line[k]);
        }
        m_transforms.forward(line);
        for (std::size_t bin = 0; bin < padded; ++bin)
            powers[bin] += std::norm(line[bin]) / std::max(energy, 1e-300);
    }
    const SpectralPeak peak = SpectralPeak::of(powers);
    // Samples of a narrow band have much in common.
    return peak.strength > 2.0 * least / edgeBand / 4.0 ? peak : SpectralPeak{};
}
