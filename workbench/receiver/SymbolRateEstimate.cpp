// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SymbolRateEstimate.h"

#include "workbench/receiver/ReceiverChain.h"

#include <QElapsedTimer>

#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>

namespace {

using Complex = std::complex<double>;

constexpr std::size_t minPartLength = 1024;
constexpr std::size_t partStep = 4;        // between lengths of parts, a factor
constexpr std::size_t maxPartCount = 256;  // as long as one another
constexpr std::size_t bandCount = 1024;    // into which the spectrum is divided...
constexpr std::size_t minBandLength = 16;  // ...with so many bins each at least
constexpr double leastLevel = 0.003;       // of the highest band that counts
constexpr double minPeriods = 32.0;        // of a symbol rate in a part
constexpr double ln2 = 0.6931471805599453; // median over mean of an exponential distribution

/// Plans of the transforms in use; planning is not safe in several threads at once, running is.
class Transforms
{
public:
    ~Transforms()
    {
        const std::lock_guard<std::mutex> lock(planning());
        for (const auto& [key, plan] : m_plans)
            fftw_destroy_plan(plan);
    }
    Transforms() = default;
    Transforms(const Transforms&) = delete;
    Transforms& operator=(const Transforms&) = delete;

    /// In place; direction as FFTW has it.
    void run(std::vector<Complex>& values, int direction)
    {
        auto* const data = reinterpret_cast<fftw_complex*>(values.data());
        const std::pair<std::size_t, int> key(values.size(), direction);
        auto plan = m_plans.find(key);
        if (plan == m_plans.end()) {
            const std::lock_guard<std::mutex> lock(planning());
            plan = m_plans
                       .emplace(key, fftw_plan_dft_1d(static_cast<int>(values.size()), data, data,
                                                      direction, FFTW_ESTIMATE | FFTW_UNALIGNED))
                       .first;
        }
        fftw_execute_dft(plan->second, data, data);
    }

private:
    static std::mutex& planning()
    {
        static std::mutex mutex;
        return mutex;
    }

    std::map<std::pair<std::size_t, int>, fftw_plan> m_plans;
};

/// Window after Hann, 0 at both ends and 1 in the middle.
double taper(std::size_t index, std::size_t length)
{
    const double turn = 2.0 * M_PI / static_cast<double>(length);
    return 0.5 - 0.5 * std::cos(turn * (static_cast<double>(index) + 0.5));
}

template<class Iterator>
double quantileOf(Iterator begin, Iterator end, double part)
{
    const auto place = begin + static_cast<std::ptrdiff_t>(part * static_cast<double>(end - begin));
    std::nth_element(begin, place, end);
    return *place;
}

/// Levels of consecutive bands of a power spectrum, such that lines do not count.
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

/// A line that a symbol clock may have left.
struct Line
{
    double rate = 0.0;          // Hz
    double strength = 0.0;      // power over that of the noise about it
    double steadiness = 0.0;    // F ratio of its parts
    double rivalStrength = 0.0; // of the strongest line that contradicts it
    double symbolCount = 0.0;
    double duration = 0.0;    // s
    double start = 0.0;       // s, of the part
    bool isPlain = false;     // nothing else about the signal speaks against it
    bool isPeriodic = false;  // the part is, see PartSearch
    std::size_t binCount = 0; // in which it was looked for
};

struct LineSpectrum
{
    std::vector<double> wave; // squared envelope or derivative
    std::vector<double> strength;
    double binWidth = 1.0; // Hz
};

/// Looks for a symbol clock's line in a part of a signal.
class PartSearch
{
public:
    PartSearch(Transforms& transforms, const SymbolRateEstimate::Signal& signal)
        : m_transforms(transforms)
        , m_signal(signal)
    {}

    Line search(std::size_t start, std::size_t length);

private:
    bool whiten(std::size_t start, std::size_t length);
    LineSpectrum spectrumOf(bool isDerivative);
    bool isHollow(double rate) const;
    bool isOfConverter(double bin) const;
    bool isPeriodic() const;
    double repetition(double rate) const;
    double rivalOf(const std::array<LineSpectrum, 2>& spectra, double bin, double line) const;
    Line strongest(const std::array<LineSpectrum, 2>& spectra) const;

    Transforms& m_transforms;
    const SymbolRateEstimate::Signal& m_signal;
    std::vector<Complex> m_spectrum; // of the whitened signal, its band only, from the lowest
    std::size_t m_waveLength = 0;
    double m_duration = 1.0;      // s
    double m_start = 0.0;         // s
    double m_bandwidth = 0.0;     // Hz, both sides
    double m_center = 0.0;        // bins of m_spectrum
    std::vector<double> m_levels; // of the signal in its bands, from that of m_spectrum's first bin
    std::vector<double> m_power;  // of the signal, lines levelled, in the bins of m_spectrum
    std::size_t m_bandLength = 1; // bins
    double m_linePower = 0.0;     // above the level, of all lines of the signal...
    double m_highestLine = 0.0;   // ...and of the highest
};

bool PartSearch::whiten(std::size_t start, std::size_t length)
{
    const auto from = m_signal.samples.begin() + static_cast<std::ptrdiff_t>(start);
    std::vector<Complex> spectrum(from, from + static_cast<std::ptrdiff_t>(length));
    for (std::size_t i = 0; i < length; ++i) // keeps lines within a few bins
        spectrum[i] *= taper(i, length);
    m_transforms.run(spectrum, FFTW_FORWARD);
    std::rotate(spectrum.begin(), spectrum.begin() + static_cast<std::ptrdiff_t>(length / 2),
                spectrum.end()); // frequencies rise from -1/2 sample rate
    std::vector<double> power(length);
    std::transform(spectrum.begin(), spectrum.end(), power.begin(),
                   [](const Complex& value) { return std::norm(value); });
    const std::size_t bandLength = std::max(length / bandCount, minBandLength);
    const std::vector<double> levels = levelsOf(power, bandLength);

    // What rises clearly above the quietest bands is signal.
    std::vector<double> sorted = levels;
    const double highest = *std::max_element(levels.begin(), levels.end());
    const double floor = std::max(quantileOf(sorted.begin(), sorted.end(), 0.1), highest * 1e-6);
    if (!(highest > 0.0) || !std::isfinite(highest))
        return false;
    std::vector<double> excess(levels.size());
    std::transform(levels.begin(), levels.end(), excess.begin(),
                   [floor](double level) { return level > 3.0 * floor ? level - floor : 0.0; });
    const std::size_t middle = levels.size() / 2;
    bool isPassband = false;
    if (!m_signal.isComplex) {
        // Of a real signal on a carrier only the positive frequencies.
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
        isPassband = total > 0.0 && low - middle > 2 &&
                     static_cast<double>(low - middle) > 0.3 * static_cast<double>(high - middle);
        if (isPassband)
            std::fill(excess.begin(), excess.begin() + static_cast<std::ptrdiff_t>(middle), 0.0);
    }
    double sum = 0.0, squares = 0.0, moment = 0.0;
    std::size_t first = excess.size(), last = 0;
    for (std::size_t band = 0; band < excess.size(); ++band) {
        if (!(excess[band] > highest * leastLevel))
            continue;
        sum += excess[band];
        squares += excess[band] * excess[band];
        moment += excess[band] * (static_cast<double>(band) + 0.5);
        first = std::min(first, band);
        last = std::max(last, band);
    }
    if (first > last)
        return false;
    m_duration = static_cast<double>(length) / m_signal.sampleRate;
    m_start = static_cast<double>(start) / m_signal.sampleRate;
    const double binWidth = 1.0 / m_duration;
    m_bandwidth = sum * sum / squares * static_cast<double>(bandLength) * binWidth;
    if (!m_signal.isComplex && !isPassband) { // symmetric about 0
        first = std::min(first, levels.size() - 1 - last);
        last = levels.size() - 1 - first;
        m_center = static_cast<double>(length / 2 - first * bandLength);
    } else {
        m_center = (moment / sum - static_cast<double>(first)) * static_cast<double>(bandLength);
    }
    m_bandLength = bandLength;
    m_levels.assign(excess.begin() + static_cast<std::ptrdiff_t>(first),
                    excess.begin() + static_cast<std::ptrdiff_t>(last + 1));
    m_spectrum.assign((last - first + 1) * bandLength, Complex());
    m_power.assign(m_spectrum.size(), 0.0);
    m_linePower = 0.0;
    m_highestLine = 0.0;
    for (std::size_t bin = 0; bin < m_spectrum.size(); ++bin) {
        const std::size_t band = first + bin / bandLength;
        if (!(excess[band] > highest * leastLevel))
            continue;
        const std::size_t index = first * bandLength + bin;
        const double level = std::sqrt(levels[band]);
        const double magnitude = std::sqrt(power[index]);
        // Noise-like values exceed 4 times their r.m.s. once in 10^7.
        const double scale = magnitude > 4.0 * level ? 1.0 / magnitude : 1.0 / level;
        m_power[bin] = magnitude > 4.0 * level ? levels[band] : power[index];
        const double above = power[index] - m_power[bin];
        m_linePower += above;
        m_highestLine = std::max(m_highestLine, 1.5 * above); // with what the window spreads
        m_spectrum[bin] = spectrum[index] * (scale * excess[band] / levels[band]);
    }
    m_waveLength = 64;
    while (m_waveLength < 2 * m_spectrum.size())
        m_waveLength *= 2;
    return true;
}

LineSpectrum PartSearch::spectrumOf(bool isDerivative)
{
    std::vector<Complex> values(m_waveLength);
    std::copy(m_spectrum.begin(), m_spectrum.end(), values.begin());
    if (isDerivative) { // of a white signal its signs are what counts
        for (std::size_t bin = 0; bin < m_spectrum.size(); ++bin) {
            if (static_cast<double>(bin) < m_center)
                values[bin] = -values[bin];
        }
    }
    m_transforms.run(values, FFTW_BACKWARD);
    LineSpectrum result;
    result.wave.resize(m_waveLength);
    constexpr double least = 0.01; // of the window: what it cut off does not come back
    for (std::size_t i = 0; i < m_waveLength; ++i) {
        const double window = taper(i, m_waveLength);
        result.wave[i] = std::norm(values[i]) / (window * window + least);
    }
    std::vector<double> sorted = result.wave;
    const double cap = 8.0 * quantileOf(sorted.begin(), sorted.end(), 0.5);
    double mean = 0.0;
    for (double& value : result.wave) {
        value = std::min(value, cap);
        mean += value;
    }
    mean /= static_cast<double>(m_waveLength);
    for (std::size_t i = 0; i < m_waveLength; ++i) {
        result.wave[i] -= mean;
        values[i] = result.wave[i] * taper(i, m_waveLength);
    }
    m_transforms.run(values, FFTW_FORWARD);
    std::vector<double> power(m_waveLength / 2);
    std::transform(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(power.size()),
                   power.begin(), [](const Complex& value) { return std::norm(value); });
    const std::size_t bandLength = std::min<std::size_t>(64, power.size() / 4);
    const std::vector<double> levels = levelsOf(power, bandLength);
    result.strength.resize(power.size());
    for (std::size_t bin = 0; bin < power.size(); ++bin) {
        const double place =
            std::max((static_cast<double>(bin) + 0.5) / static_cast<double>(bandLength) - 0.5, 0.0);
        const auto band = std::min(static_cast<std::size_t>(place), levels.size() - 1);
        const auto next = std::min(band + 1, levels.size() - 1);
        const double part = place - static_cast<double>(band);
        const double level = levels[band] + std::min(part, 1.0) * (levels[next] - levels[band]);
        result.strength[bin] = level > 0.0 ? power[bin] / level : 0.0;
    }
    result.binWidth = 1.0 / m_duration;
    return result;
}

/// F ratio of a line: its power over that in pieces of the wave once it is taken out. Only where
/// the window is wide open.
double steadinessOf(const LineSpectrum& spectrum, double bin)
{
    constexpr std::size_t pieceCount = 16;
    const std::size_t length = spectrum.wave.size();
    const std::size_t first = length / 8;
    const std::size_t used = length - 2 * first;
    const double step = 2.0 * M_PI * bin / static_cast<double>(length);
    std::array<Complex, pieceCount> pieces{};
    for (std::size_t i = 0; i < used; ++i)
        pieces[i * pieceCount / used] +=
            std::polar(1.0, -step * static_cast<double>(i)) * spectrum.wave[first + i];
    Complex sum;
    double power = 0.0;
    for (const Complex& piece : pieces) {
        sum += piece;
        power += std::norm(piece);
    }
    const double line = std::norm(sum) / pieceCount;
    return line / std::max((power - line) / (pieceCount - 1), power * 1e-9);
}

struct Peak
{
    double strength = 0.0;
    std::size_t bin = 0;
    const LineSpectrum* of = nullptr;
};

Peak highestOf(const std::array<LineSpectrum, 2>& spectra, std::size_t first, std::size_t end)
{
    Peak peak;
    for (const LineSpectrum& spectrum : spectra) {
        for (std::size_t bin = first; bin < end; ++bin) {
            if (spectrum.strength[bin] > peak.strength)
                peak = {spectrum.strength[bin], bin, &spectrum};
        }
    }
    return peak;
}

/// Whether the middle of the band is empty, as where each bit is sent as two opposite symbols: the
/// lines of the bits and of the symbols cannot be told apart then.
bool PartSearch::isHollow(double rate) const
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

/// Whether a line lies where converters leave theirs.
bool PartSearch::isOfConverter(double bin) const
{
    const double all = m_duration * m_signal.sampleRate;
    return std::min(std::abs(bin - all / 2.0), std::abs(bin - all / 4.0)) < 0.5;
}

/// Whether much of the signal is lines of its own, as where a frame comes again and again. One line
/// may be a carrier.
bool PartSearch::isPeriodic() const
{
    constexpr double most = 0.6; // of the power
    double rest = 0.0;
    for (const double power : m_power)
        rest += power;
    const double lines = m_linePower - m_highestLine;
    return lines > most * (rest + lines);
}

/// How much the signal, without its own lines, is like itself some symbols later: data are not.
/// 0 to 1.
double PartSearch::repetition(double rate) const
{
    constexpr int firstSymbol = 4;
    constexpr int lastSymbol = 12;
    double highest = 0.0;
    for (int symbol = firstSymbol; symbol <= lastSymbol; ++symbol) {
        const Complex step = std::polar(1.0, 2.0 * M_PI * symbol / (rate * m_duration));
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

/// The strongest line that contradicts one, as far as noise does not give it: at a simple fraction
/// of it, or elsewhere, where it is worth less the weaker it is. Multiples are to be expected, and
/// what is far below it comes from frames.
double PartSearch::rivalOf(const std::array<LineSpectrum, 2>& spectra, double bin,
                           double line) const
{
    constexpr double lowestPart = 0.2;
    const auto first = static_cast<std::size_t>(lowestPart * bin) + 4;
    double rival = 0.0;
    for (const LineSpectrum& spectrum : spectra) {
        const double noise =
            std::log(100.0 * static_cast<double>(2 * spectrum.strength.size())); // 1 in 100
        for (std::size_t other = first; other < spectrum.strength.size(); ++other) {
            const double strength = spectrum.strength[other] - noise;
            const double ratio = static_cast<double>(other) / bin;
            const double multiple = std::round(ratio);
            if (strength <= 0.0 ||
                (multiple >= 1.0 && std::abs(ratio - multiple) * bin <= 3.0 * multiple))
                continue;
            bool isFraction = false;
            for (const double fraction : {1.0 / 4.0, 1.0 / 3.0, 1.0 / 2.0, 2.0 / 3.0, 3.0 / 2.0})
                isFraction = isFraction || std::abs(ratio - fraction) * bin <= 3.0;
            rival =
                std::max(rival, isFraction ? strength : strength * std::min(strength / line, 1.0));
        }
    }
    return rival;
}

Line PartSearch::strongest(const std::array<LineSpectrum, 2>& spectra) const
{
    constexpr double minFill = 0.6; // of bandwidth over rate: less has no room for it
    constexpr double maxFill = 1.8;
    constexpr double maxRepetition = 0.3;
    constexpr double leastFundamental = 0.25; // of the strength of its multiple
    Line line;
    const double lowest = std::max(m_bandwidth / 4.0, minPeriods / m_duration);
    const double highest = std::min(m_bandwidth * 2.5, 0.5 * m_signal.sampleRate);
    const auto firstBin = static_cast<std::size_t>(std::ceil(lowest * m_duration));
    const auto endBin = std::min(static_cast<std::size_t>(highest * m_duration) + 1,
                                 spectra[0].strength.size() - 1);
    if (firstBin >= endBin)
        return line;
    Peak best = highestOf(spectra, firstBin, endBin);
    if (!best.of)
        return line;
    // Sharp edges give multiples that may be as strong.
    for (std::size_t divisor = 4; divisor > 1; --divisor) {
        const std::size_t middle = (best.bin + divisor / 2) / divisor;
        if (middle <= firstBin)
            continue;
        const Peak lower = highestOf(spectra, middle - 1, middle + 2);
        if (lower.strength > leastFundamental * best.strength) {
            best = lower;
            break;
        }
    }
    line.strength = best.strength;
    line.binCount = 2 * (endBin - firstBin);
    const double left = std::sqrt(best.of->strength[best.bin - 1]);
    const double right = std::sqrt(best.of->strength[best.bin + 1]);
    const double bend = left - 2.0 * std::sqrt(best.strength) + right;
    // A fundamental need not be a peak.
    const double offset = bend < 0.0 ? std::clamp(0.5 * (left - right) / bend, -0.5, 0.5) : 0.0;
    const double bin = static_cast<double>(best.bin) + offset;
    line.steadiness = steadinessOf(*best.of, bin);
    line.symbolCount = bin;
    line.duration = m_duration;
    line.start = m_start;
    line.rate = bin / m_duration;
    line.rivalStrength = rivalOf(spectra, bin, line.strength);
    const double fill = m_bandwidth / line.rate;
    line.isPlain = fill >= minFill && fill <= maxFill && !isHollow(line.rate) &&
                   !isOfConverter(bin) && repetition(line.rate) < maxRepetition;
    return line;
}

Line PartSearch::search(std::size_t start, std::size_t length)
{
    if (!whiten(start, length))
        return {};
    const std::array<LineSpectrum, 2> spectra{spectrumOf(false), spectrumOf(true)};
    Line line = strongest(spectra);
    line.isPeriodic = isPeriodic();
    return line;
}

/// Probability that noise gives a value of an F distribution with 2 and 2 * count degrees of
/// freedom, or more, in any of some tries.
double falseAlarm(double ratio, double count, double tries)
{
    const double once = std::exp(-count * std::log1p(ratio / count));
    return -std::expm1(tries * std::log1p(-std::min(once, 1.0 - 1e-16)));
}

/// Whether one line shows a symbol rate better than another: it is clearer, or clear and longer.
bool isBetter(const Line& one, const Line& other)
{
    constexpr double clear = 100.0;
    const auto clearness = [](const Line& line) {
        return std::min({line.strength - line.rivalStrength, line.steadiness, clear});
    };
    const double here = clearness(one);
    const double there = clearness(other);
    return here > there || (here == there && one.duration > other.duration);
}

/// Whether the other parts leave a line as plain as it looked in its own: most that have it agree,
/// none has its half or double instead, and where the part is short another one has it, too.
bool isPlainAmong(const std::vector<Line>& lines, const Line& line, double whole)
{
    constexpr double least = 20.0;     // of the strength
    constexpr double shortPart = 16.0; // so many would fill the signal
    bool isConfirmed = line.duration * shortPart > whole;
    int count = 0;
    int plainCount = 0;
    for (const Line& other : lines) {
        if (other.isPeriodic && other.duration >= line.duration)
            return false; // what is found in one frame is found in all
        const double bins = std::min(line.duration, other.duration);
        if (line.rate * other.duration < 2.0 * minPeriods || // too short to have the line
            std::min(other.strength - other.rivalStrength, other.steadiness) < least)
            continue;
        if (std::abs(other.rate - 2.0 * line.rate) * bins < 2.0 ||
            std::abs(other.rate - line.rate / 2.0) * bins < 2.0)
            return false;
        if (std::abs(other.rate - line.rate) * bins > 0.5)
            continue;
        ++count;
        plainCount += other.isPlain ? 1 : 0;
        isConfirmed = isConfirmed || (other.duration == line.duration &&
                                      std::abs(other.start - line.start) >= line.duration);
    }
    return line.isPlain && isConfirmed && 4 * plainCount >= 3 * count;
}

SymbolRateEstimate verdictOn(const Line& line, double tries)
{
    constexpr double levelCount = 40.0; // bins that a level is worth, so that its own error counts
    constexpr double pieceCount = 15.0;
    constexpr double maxFalseAlarm = 0.001;
    SymbolRateEstimate estimate;
    const double chance = std::max(falseAlarm(line.strength, levelCount, tries),
                                   falseAlarm(line.steadiness, pieceCount, tries));
    if (!(chance < maxFalseAlarm))
        return estimate;
    const double clearness = std::max(1.0 - line.rivalStrength / std::max(line.strength, 1.0), 0.0);
    const bool isPlain = line.isPlain && line.symbolCount >= SymbolRateEstimate::minSymbolCount;
    estimate.symbolRate = line.rate;
    estimate.sureness = (1.0 - chance) * clearness * (isPlain ? 1.0 : 0.5);
    estimate.verdict = estimate.sureness >= SymbolRateEstimate::minSure
                           ? SymbolRateEstimate::Verdict::Sure
                           : SymbolRateEstimate::Verdict::Unsure;
    return estimate;
}

/// A copy that can be looked at: finite, of a sensible size, in the middle.
SymbolRateEstimate::Signal prepared(const SymbolRateEstimate::Signal& signal)
{
    SymbolRateEstimate::Signal result{{}, false, signal.sampleRate};
    const std::size_t count = std::min(signal.samples.size(), SymbolRateEstimate::maxSampleCount);
    const auto first =
        signal.samples.begin() + static_cast<std::ptrdiff_t>((signal.samples.size() - count) / 2);
    result.samples.assign(first, first + static_cast<std::ptrdiff_t>(count));
    double highest = 0.0;
    for (Complex& sample : result.samples) {
        if (!signal.isComplex)
            sample.imag(0.0);
        if (!std::isfinite(sample.real()) || !std::isfinite(sample.imag()))
            sample = 0.0;
        highest = std::max({highest, std::abs(sample.real()), std::abs(sample.imag())});
        result.isComplex = result.isComplex || sample.imag() != 0.0;
    }
    for (Complex& sample : result.samples)
        sample = highest > 0.0 ? Complex(sample.real() / highest, sample.imag() / highest) : 0.0;
    return result;
}

} // namespace

SymbolRateEstimate SymbolRateEstimate::of(const Signal& signal, const GoOn& goOn)
{
    SymbolRateEstimate best;
    if (signal.samples.size() < minPartLength || !(signal.sampleRate > 0.0) ||
        !std::isfinite(signal.sampleRate))
        return best;
    const Signal clean = prepared(signal);
    const std::size_t count = clean.samples.size();
    std::vector<std::pair<std::size_t, std::size_t>> parts; // start and length
    std::size_t length = minPartLength;
    while (2 * length <= count)
        length *= 2;
    for (; length >= minPartLength && length * maxPartCount >= 2 * count; length /= partStep) {
        const std::size_t steps = (count - length + length / 2 - 1) / (length / 2);
        for (std::size_t step = 0; step <= steps; ++step)
            parts.emplace_back(std::min(step * length / 2, count - length), length);
    }
    Transforms transforms;
    PartSearch search(transforms, clean);
    Line line;
    std::vector<Line> lines;
    double tries = 0.0;
    double done = 0.0, all = 0.0;
    for (const auto& part : parts)
        all += static_cast<double>(part.second);
    for (const auto& [start, partLength] : parts) {
        const Line found = search.search(start, partLength);
        tries += static_cast<double>(found.binCount);
        lines.push_back(found);
        if (isBetter(found, line))
            line = found;
        done += static_cast<double>(partLength);
        if (goOn && !goOn(done / all))
            return best;
    }
    line.isPlain = isPlainAmong(lines, line, static_cast<double>(count) / clean.sampleRate);
    return verdictOn(line, std::max(tries, 1.0));
}

SymbolRateEstimate::Signal SymbolRateEstimate::signalOf(SignalSource& source, int channel,
                                                        const ReceiverSettings& settings,
                                                        std::int64_t from)
{
    constexpr std::size_t blockLength = 8192;
    constexpr int longestMs = 3000; // of waiting for a live signal
    QElapsedTimer patience;
    patience.start();
    Signal signal;
    ReceiverSettings usedSettings = settings;
    usedSettings.symbolRate.reset();
    usedSettings.modulation.reset();
    usedSettings.rollOff.reset();
    usedSettings.hasGainControl = false;
    ReceiverChain chain;
    chain.configure(usedSettings, source.sampleRate());
    signal.sampleRate = chain.format().sampleRate;
    signal.isComplex = source.isComplex() || usedSettings.isOn;
    const std::int64_t position = source.position();
    if (!source.isLive() && from != position && !source.seek(from))
        return signal;
    const auto width = static_cast<std::size_t>(source.valueCount());
    const auto value = static_cast<std::size_t>(channel);
    const std::size_t first = source.isComplex() ? value / 2 * 2 : value;
    std::vector<double> values;
    BasebandBlock block;
    while (signal.samples.size() < maxSampleCount) {
        const std::size_t got =
            source.read(values, std::min(blockLength, maxSampleCount - signal.samples.size()));
        if (got == 0 && source.isLive() && !source.hasEnded() && patience.elapsed() < longestMs)
            continue;
        if (got == 0)
            break;
        block.samples.clear();
        block.demodulated.clear();
        for (std::size_t k = first; k < values.size(); k += width) {
            const double q = source.isComplex() ? values[k + 1] : 0.0;
            signal.samples.emplace_back(values[k], q);
            block.samples.emplace_back(static_cast<float>(values[k]), static_cast<float>(q));
        }
        if (!usedSettings.isOn)
            continue;
        signal.samples.resize(signal.samples.size() - block.samples.size());
        chain.process(block);
        for (std::size_t k = 0; k < block.samples.size(); ++k) {
            if (chain.format().isDemodulated)
                signal.samples.emplace_back(block.demodulated[k]);
            else
                signal.samples.emplace_back(block.samples[k]);
        }
    }
    source.seek(position);
    return signal;
}

SymbolRateEstimate SymbolRateEstimate::ofSource(SignalSource& source, int channel,
                                                const ReceiverSettings& settings, const GoOn& goOn)
{
    constexpr int maxPlaceCount = 3;
    const std::int64_t count = source.isLive() ? 0 : source.sampleCount().value_or(0);
    const auto most = static_cast<std::int64_t>(maxSampleCount);
    const int placeCount =
        static_cast<int>(std::clamp<std::int64_t>(count / most, 1, maxPlaceCount));
    SymbolRateEstimate best;
    bool isEnded = false;
    for (int place = 0; place < placeCount && best.verdict != Verdict::Sure && !isEnded; ++place) {
        const std::int64_t from = placeCount > 1 ? (count - most) / (placeCount - 1) * place : 0;
        const auto goOnHere = [&goOn, &isEnded, place, placeCount](double part) {
            isEnded = goOn && !goOn((place + part) / placeCount);
            return !isEnded;
        };
        const SymbolRateEstimate here = of(signalOf(source, channel, settings, from), goOnHere);
        if (here.verdict > best.verdict ||
            (here.verdict == best.verdict && here.sureness > best.sureness))
            best = here;
    }
    return isEnded ? SymbolRateEstimate() : best;
}

QString SymbolRateEstimate::sentence() const
{
    constexpr int digitCount = 7;
    const QString rate = QString::number(symbolRate, 'g', digitCount);
    switch (verdict) {
    case Verdict::Sure:
        return tr("symbol rate: %1 Bd (sure)").arg(rate);
    case Verdict::Unsure:
        return tr("symbol rate: %1 Bd (unsure, %2 of 1); look whether the eye opens there, at half "
                  "or at twice of it")
            .arg(rate)
            .arg(sureness, 0, 'f', 2);
    case Verdict::None:
        break;
    }
    return tr("symbol rate: none found; give it as a number, and where the frequency carries the "
              "symbols --demod fm");
}
