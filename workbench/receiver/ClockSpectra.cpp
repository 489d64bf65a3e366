// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ClockSpectra.h"

#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

using Complex = std::complex<double>;

constexpr std::size_t bandCount = 1024;    // into which the spectrum is divided...
constexpr std::size_t minBandLength = 16;  // ...with so many bins each at least
constexpr double leastLevel = 0.003;       // of the highest band that counts
constexpr double ln2 = 0.6931471805599453; // median over mean of an exponential distribution

/// Window after Hann, 0 at both ends and 1 in the middle.
double taper(std::size_t index, std::size_t length)
{
    const double turn = 2.0 * pi / static_cast<double>(length);
    return 0.5 - 0.5 * std::cos(turn * (static_cast<double>(index) + 0.5));
}

template<class Iterator>
double quantileOf(Iterator begin, Iterator end, double part)
{
    const auto place = begin + static_cast<std::ptrdiff_t>(part * static_cast<double>(end - begin));
    std::nth_element(begin, place, end);
    return *place;
}

/// Levels of consecutive bands of a power spectrum, by medians, so that lines do not count.
std::vector<double> levelsOf(const std::vector<double>& power, std::size_t bandLength)
{
    std::vector<double> levels;
    std::vector<double> band;
    for (std::size_t start = 0; start + bandLength <= power.size(); start += bandLength) {
        const auto from = power.begin() + static_cast<std::ptrdiff_t>(start);
        band.assign(from, from + static_cast<std::ptrdiff_t>(bandLength));
        levels.push_back(quantileOf(band.begin(), band.end(), 0.5) / ln2);
    }
    return levels;
}

std::vector<double> powerOf(const std::vector<Complex>& spectrum, std::size_t count)
{
    std::vector<double> power(count);
    std::transform(spectrum.begin(), spectrum.begin() + static_cast<std::ptrdiff_t>(count),
                   power.begin(), [](const Complex& value) { return std::norm(value); });
    return power;
}

/// Frequencies rise from -1/2 sample rate.
std::vector<Complex> spectrumOf(std::vector<Complex> samples, FourierTransforms& transforms)
{
    for (std::size_t i = 0; i < samples.size(); ++i) // keeps lines within a few bins
        samples[i] *= taper(i, samples.size());
    transforms.forward(samples);
    std::rotate(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2),
                samples.end());
    return samples;
}

/// Levels of the bands that rise clearly above the quietest ones, which are the signal; 0
/// elsewhere.
std::vector<double> excessOf(const std::vector<double>& levels, double highest)
{
    std::vector<double> sorted = levels;
    const double floor = std::max(quantileOf(sorted.begin(), sorted.end(), 0.1), highest * 1e-6);
    std::vector<double> excess(levels.size());
    std::transform(levels.begin(), levels.end(), excess.begin(),
                   [floor](double level) { return level > 3.0 * floor ? level - floor : 0.0; });
    return excess;
}

/// Whether a real signal is on a carrier, told by its bands from frequency 0 on.
bool isOnCarrier(const std::vector<double>& excess, std::size_t middle)
{
    double total = 0.0;
    for (std::size_t band = middle; band < excess.size(); ++band)
        total += excess[band];
    double sum = 0.0;
    std::size_t low = excess.size(), high = middle;
    for (std::size_t band = middle; band < excess.size(); ++band) {
        sum += excess[band];
        if (low == excess.size() && sum > 0.02 * total)
            low = band;
        if (sum < 0.9 * total)
            high = band;
    }
    return total > 0.0 && low - middle > 2 &&
           static_cast<double>(low - middle) > 0.3 * static_cast<double>(high - middle);
}

constexpr std::size_t pieceCount = 16; // into which a wave is divided
constexpr double usedPart = 0.75;      // used part of the wave, where the window is wide open

/// Sums of the pieces of a wave once a line is moved to 0.
std::array<Complex, pieceCount> piecesOf(const std::vector<double>& wave, double bin)
{
    const std::size_t length = wave.size();
    const std::size_t first = length / 8;
    const std::size_t used = length - 2 * first;
    const double step = 2.0 * pi * bin / static_cast<double>(length);
    std::array<Complex, pieceCount> pieces{};
    for (std::size_t i = 0; i < used; ++i)
        pieces[i * pieceCount / used] +=
            std::polar(1.0, -step * static_cast<double>(i)) * wave[first + i];
    return pieces;
}

/// Power of a wave's bins over that of the noise about them.
std::vector<double> strengthOf(const std::vector<double>& power)
{
    const std::size_t bandLength = std::min<std::size_t>(64, power.size() / 4);
    const std::vector<double> levels = levelsOf(power, bandLength);
    std::vector<double> strength(power.size());
    for (std::size_t bin = 0; bin < power.size(); ++bin) {
        const double place =
            std::max((static_cast<double>(bin) + 0.5) / static_cast<double>(bandLength) - 0.5, 0.0);
        const auto band = std::min(static_cast<std::size_t>(place), levels.size() - 1);
        const auto next = std::min(band + 1, levels.size() - 1);
        const double part = place - static_cast<double>(band);
        const double level = levels[band] + std::min(part, 1.0) * (levels[next] - levels[band]);
        strength[bin] = level > 0.0 ? power[bin] / level : 0.0;
    }
    return strength;
}

} // namespace

std::optional<ClockSpectra> ClockSpectra::of(const SampledSignal& signal, std::size_t start,
                                             std::size_t length, FourierTransforms& transforms)
{
    const auto from = signal.samples.begin() + static_cast<std::ptrdiff_t>(start);
    const std::vector<Complex> spectrum =
        ::spectrumOf({from, from + static_cast<std::ptrdiff_t>(length)}, transforms);
    const std::vector<double> power = powerOf(spectrum, length);
    const std::size_t bandLength = std::max(length / bandCount, minBandLength);
    const std::vector<double> levels = levelsOf(power, bandLength);
    const double highest = *std::max_element(levels.begin(), levels.end());
    if (!(highest > 0.0) || !std::isfinite(highest))
        return std::nullopt;
    std::vector<double> excess = excessOf(levels, highest);
    const std::size_t middle = levels.size() / 2;
    const bool isPassband = !signal.isComplex && isOnCarrier(excess, middle);
    if (isPassband) // its positive frequencies are enough
        std::fill(excess.begin(), excess.begin() + static_cast<std::ptrdiff_t>(middle), 0.0);
    for (double& level : excess)
        level = level > highest * leastLevel ? level : 0.0;
    if (std::count(excess.begin(), excess.end(), 0.0) == static_cast<std::ptrdiff_t>(excess.size()))
        return std::nullopt;

    ClockSpectra result;
    result.m_sampleRate = signal.sampleRate;
    result.m_start = static_cast<double>(start) / signal.sampleRate;
    result.m_duration = static_cast<double>(length) / signal.sampleRate;
    result.m_bandLength = bandLength;
    const std::size_t first = result.findBand(excess, !signal.isComplex && !isPassband);
    result.whiten(first, spectrum, power, levels);
    result.m_spectra = {result.spectrumOf(false, transforms), result.spectrumOf(true, transforms)};
    return result;
}

/// Finds the signal's bands, and keeps their levels.
/// @return the first one.
std::size_t ClockSpectra::findBand(const std::vector<double>& excess, bool isSymmetric)
{
    double sum = 0.0, squares = 0.0, moment = 0.0;
    std::size_t first = excess.size(), last = 0;
    for (std::size_t band = 0; band < excess.size(); ++band) {
        if (!(excess[band] > 0.0))
            continue;
        sum += excess[band];
        squares += excess[band] * excess[band];
        moment += excess[band] * (static_cast<double>(band) + 0.5);
        first = std::min(first, band);
        last = std::max(last, band);
    }
    const auto bandLength = static_cast<double>(m_bandLength);
    const double binWidth = 1.0 / m_duration;
    m_bandwidth = sum * sum / squares * bandLength * binWidth;
    if (isSymmetric) { // about 0
        first = std::min(first, excess.size() - 1 - last);
        last = excess.size() - 1 - first;
        m_center = static_cast<double>((excess.size() / 2 - first) * m_bandLength);
    } else {
        m_center = (moment / sum - static_cast<double>(first)) * bandLength;
    }
    m_levels.assign(excess.begin() + static_cast<std::ptrdiff_t>(first),
                    excess.begin() + static_cast<std::ptrdiff_t>(last + 1));
    return first;
}

/// @param levels  of all bands, the noise included.
void ClockSpectra::whiten(std::size_t firstBand, const std::vector<Complex>& spectrum,
                          const std::vector<double>& power, const std::vector<double>& levels)
{
    m_whitened.assign(m_levels.size() * m_bandLength, Complex());
    m_power.assign(m_whitened.size(), 0.0);
    for (std::size_t bin = 0; bin < m_whitened.size(); ++bin) {
        const std::size_t band = bin / m_bandLength;
        if (!(m_levels[band] > 0.0))
            continue;
        const std::size_t index = firstBand * m_bandLength + bin;
        const double all = levels[firstBand + band];
        const double level = std::sqrt(all);
        const double magnitude = std::sqrt(power[index]);
        // Noise-like values exceed 4 times their r.m.s. once in 10^7.
        const double scale = magnitude > 4.0 * level ? 1.0 / magnitude : 1.0 / level;
        m_power[bin] = magnitude > 4.0 * level ? all : power[index];
        const double above = power[index] - m_power[bin];
        m_linePower += above;
        // A margin for lines that the window spreads.
        m_highestLine = std::max(m_highestLine, 1.5 * above);
        m_whitened[bin] = spectrum[index] * (scale * m_levels[band] / all);
    }
}

ClockSpectra::Spectrum ClockSpectra::spectrumOf(bool isDerivative,
                                                FourierTransforms& transforms) const
{
    std::size_t length = 64;
    while (length < 2 * m_whitened.size())
        length *= 2;
    std::vector<Complex> values(length);
    std::copy(m_whitened.begin(), m_whitened.end(), values.begin());
    if (isDerivative) { // of a white signal only the signs of the frequencies count
        for (std::size_t bin = 0; bin < m_whitened.size(); ++bin) {
            if (static_cast<double>(bin) < m_center)
                values[bin] = -values[bin];
        }
    }
    transforms.backward(values);
    Spectrum result;
    result.wave.resize(length);
    // Of the window's square: what the window suppressed cannot be recovered.
    constexpr double least = 0.01;
    for (std::size_t i = 0; i < length; ++i) {
        const double window = taper(i, length);
        result.wave[i] = std::norm(values[i]) / (window * window + least);
    }
    std::vector<double> sorted = result.wave;
    const double cap = 8.0 * quantileOf(sorted.begin(), sorted.end(), 0.5);
    double mean = 0.0;
    for (double& value : result.wave) {
        value = std::min(value, cap);
        mean += value;
    }
    mean /= static_cast<double>(length);
    for (std::size_t i = 0; i < length; ++i) {
        result.wave[i] -= mean;
        values[i] = result.wave[i] * taper(i, length);
    }
    transforms.forward(values);
    result.strength = strengthOf(powerOf(values, length / 2));
    return result;
}

double ClockSpectra::Spectrum::steadiness(double bin) const
{
    Complex sum;
    double power = 0.0;
    for (const Complex& piece : piecesOf(wave, bin)) {
        sum += piece;
        power += std::norm(piece);
    }
    const double line = std::norm(sum) / pieceCount;
    return line / std::max((power - line) / (pieceCount - 1), power * 1e-9);
}

double ClockSpectra::Spectrum::refined(double bin) const
{
    constexpr int rounds = 3; // the first is off by a bin or so, the last finds no error left
    const double binsPerTurn = 1.0 / (usedPart / pieceCount); // of phase from piece to piece
    for (int round = 0; round < rounds; ++round) {
        const auto pieces = piecesOf(wave, bin);
        Complex step;
        for (std::size_t i = 1; i < pieceCount; ++i)
            step += pieces[i] * std::conj(pieces[i - 1]);
        const double turn = round == 0 ? std::arg(step) : 0.0;
        Complex sum;
        for (std::size_t i = 0; i < pieceCount; ++i)
            sum += pieces[i] * std::polar(1.0, -turn * static_cast<double>(i));
        double moment = 0.0, weight = 0.0;
        for (std::size_t i = 0; i < pieceCount; ++i) { // least squares of the phase that is left
            const double place = static_cast<double>(i) - 0.5 * (pieceCount - 1);
            const Complex rest =
                pieces[i] * std::polar(1.0, -turn * static_cast<double>(i)) * std::conj(sum);
            moment += place * rest.imag();
            weight += place * place * std::abs(rest);
        }
        const double slope = turn + (weight > 0.0 ? moment / weight : 0.0);
        bin += slope / (2.0 * pi) * binsPerTurn;
    }
    return bin;
}

bool ClockSpectra::isHollow(double rate) const
{
    const double reach = 0.05 * rate * m_duration; // bins
    double inner = 0.0;
    double outer = 0.0;
    for (std::size_t band = 0; band < m_levels.size(); ++band) {
        const double distance =
            std::abs((static_cast<double>(band) + 0.5) * static_cast<double>(m_bandLength) -
                     m_center) -
            0.5 * static_cast<double>(m_bandLength);
        double& highest = distance < reach ? inner : outer;
        highest = std::max(highest, m_levels[band]);
    }
    return inner < 0.25 * outer;
}

bool ClockSpectra::isPeriodic() const
{
    constexpr double most = 0.6; // of the power
    double rest = 0.0;
    for (const double power : m_power)
        rest += power;
    const double lines = m_linePower - m_highestLine;
    return lines > most * (rest + lines);
}

double ClockSpectra::repetition(double rate) const
{
    constexpr int firstPeriod = 4;
    constexpr int lastPeriod = 12;
    double highest = 0.0;
    for (int period = firstPeriod; period <= lastPeriod; ++period) {
        const Complex step = std::polar(1.0, 2.0 * pi * period / (rate * m_duration));
        Complex turn = 1.0;
        Complex sum;
        double total = 0.0;
        for (const double power : m_power) {
            sum += power * turn;
            total += power;
            turn *= step;
        }
        highest = std::max(highest, std::abs(sum) / total);
    }
    return highest;
}
