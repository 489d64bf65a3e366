// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SymbolRateEstimate.h"

#include "workbench/receiver/ClockLine.h"
#include "workbench/receiver/Demodulator.h"
#include "workbench/receiver/FrontEnd.h"
#include "workbench/receiver/HalfBits.h"
#include "workbench/receiver/StrongestStretch.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace {

using Complex = std::complex<double>;

constexpr std::size_t minPartLength = 1024;
constexpr std::size_t partStep = 4;       // factor from one length of parts to the next
constexpr std::size_t maxPartCount = 256; // of one length

SymbolRateEstimate verdictOn(const ClockLine& line, double tries)
{
    constexpr double maxFalseAlarm = 0.001;
    SymbolRateEstimate estimate;
    const double chance = line.falseAlarm(tries);
    if (!(chance < maxFalseAlarm))
        return estimate;
    const bool isPlain = line.isPlain && line.symbolCount >= SymbolRateEstimate::minSymbolCount;
    estimate.symbolRate = line.rate;
    estimate.confidence = (1.0 - chance) * line.clearness() * (isPlain ? 1.0 : 0.5);
    estimate.verdict = estimate.confidence >= SymbolRateEstimate::minSure
                           ? SymbolRateEstimate::Verdict::Sure
                           : SymbolRateEstimate::Verdict::Unsure;
    return estimate;
}

/// A part of a signal, and the rate of its clock.
struct ClockedPart
{
    std::size_t start = 0;
    std::size_t length = 0;
    double rate = 0.0;       ///< Bd
    double steadiness = 0.0; ///< F ratio of its line
};

/// The rate of a part near a known rate, from the phase of its steadier line.
ClockedPart partOf(const SymbolRateEstimate::Signal& signal, const ClockedPart& where,
                   FourierTransforms& transforms)
{
    ClockedPart part = where;
    part.steadiness = 0.0;
    const auto spectra = ClockSpectra::of(signal, part.start, part.length, transforms);
    if (!spectra)
        return part;
    for (const ClockSpectra::Spectrum& spectrum : spectra->spectra()) {
        const double bin = spectrum.refined(where.rate * spectra->duration());
        const double steadiness = spectrum.steadiness(bin);
        if (steadiness > part.steadiness) {
            part.steadiness = steadiness;
            part.rate = bin / spectra->duration();
        }
    }
    return part;
}

/// The longest part around that of a line in which the line keeps its phase: a longer part gives a
/// more exact rate.
ClockedPart longestPartOf(const ClockLine& line, const SymbolRateEstimate::Signal& signal,
                          FourierTransforms& transforms)
{
    constexpr double mostBins = 2.0;         // between the rates of a part and of its double
    constexpr double leastSteadiness = 30.0; // noise exceeds it less than once in 10^7
    const std::size_t count = signal.samples.size();
    ClockedPart part;
    part.start = static_cast<std::size_t>(std::lround(line.start * signal.sampleRate));
    part.length = static_cast<std::size_t>(std::lround(line.duration * signal.sampleRate));
    part.rate = line.rate;
    const std::size_t middle = part.start + part.length / 2;
    for (std::size_t length = part.length; length <= count; length *= 2) {
        ClockedPart longer = part;
        longer.length = length;
        longer.start = std::min(middle > length / 2 ? middle - length / 2 : 0, count - length);
        longer = partOf(signal, longer, transforms);
        const double bins = std::abs(longer.rate - part.rate) * line.duration;
        // Samples of another clock, or of none, make the line less steady.
        if (longer.steadiness < std::max(leastSteadiness, 0.7 * part.steadiness) || bins > mostBins)
            break;
        part = longer;
    }
    return part;
}

/// Checks whether the clock of an estimate is that of half bits, or whether there are half bits at
/// twice its rate.
void findCode(SymbolRateEstimate& estimate, const SymbolRateEstimate::Signal& signal,
              const ClockedPart& part)
{
    using Code = SymbolRateEstimate::Code;
    const bool isSure = estimate.verdict == SymbolRateEstimate::Verdict::Sure;
    for (const double multiple : {1.0, 2.0}) {
        const double halfRate = multiple * estimate.symbolRate;
        const Code code = HalfBits::codeOf(signal, part.start, part.length, halfRate);
        if (code == Code::Plain)
            continue;
        if (code == Code::ReturnToZero && multiple == 2.0 && isSure)
            return; // plain bits: the rate is right
        estimate.code = code;
        // A Manchester eye opens at its half bits, an eye of pulses at the bits.
        const bool isHalf = code == Code::Manchester;
        estimate.symbolRate = isHalf ? halfRate : halfRate / 2.0;
        estimate.otherRate = isHalf ? halfRate / 2.0 : halfRate;
        estimate.verdict = SymbolRateEstimate::Verdict::Unsure;
        estimate.confidence *= isSure ? 0.5 : 1.0;
        return;
    }
}

/// Turns the values of a source into the samples that are examined.
class Baseband
{
public:
    Baseband(const SignalSource& source, const ChannelChoice& channel,
             const ReceiverSettings& settings)
        : m_valueCount(static_cast<std::size_t>(source.facts().valueCount()))
        , m_isComplex(source.facts().isComplex)
        , m_channel(channel)
    {
        ReceiverSettings used = settings;
        used.symbolRate.reset();
        m_isOn = used.isOn && used.check(source.facts().sampleRate).has_value();
        if (!m_isOn)
            return;
        m_front.configure(used, source.facts().sampleRate, source.facts().valueCount(), m_isComplex,
                          channel);
        BasebandFormat format;
        format.sampleRate = source.facts().sampleRate;
        m_isDemodulated = m_demodulator.configure(used, format).isDemodulated;
    }

    void take(const std::vector<double>& values, std::vector<Complex>& samples)
    {
        if (m_isOn) {
            std::vector<BurstGate::Part> parts;
            m_front.process(values.data(), values.size(), parts);
            append(parts, samples);
            return;
        }
        for (std::size_t k = 0; k + m_valueCount <= values.size(); k += m_valueCount)
            samples.push_back(m_isComplex ? m_channel.pairOf(&values[k])
                                          : m_channel.of(&values[k]));
    }

    void finish(std::vector<Complex>& samples)
    {
        if (!m_isOn)
            return;
        std::vector<BurstGate::Part> parts;
        m_front.finish(parts);
        append(parts, samples);
    }

private:
    void append(std::vector<BurstGate::Part>& parts, std::vector<Complex>& samples)
    {
        for (BurstGate::Part& part : parts) {
            BasebandBlock block;
            block.samples = std::move(part.samples);
            if (!part.isOpen)
                std::fill(block.samples.begin(), block.samples.end(), 0.0F);
            m_demodulator.process(block);
            if (m_isDemodulated)
                samples.insert(samples.end(), block.demodulated.begin(), block.demodulated.end());
            else
                samples.insert(samples.end(), block.samples.begin(), block.samples.end());
        }
    }

    std::size_t m_valueCount;
    bool m_isComplex;
    ChannelChoice m_channel;
    bool m_isOn = false;
    bool m_isDemodulated = false;
    FrontEnd m_front;
    Demodulator m_demodulator;
};

/// A finite copy of the middle of a signal, at most as long as is examined.
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
    FourierTransforms transforms;
    ClockLine line;
    std::vector<ClockLine> lines;
    double tries = 0.0;
    double done = 0.0, all = 0.0;
    for (const auto& part : parts)
        all += static_cast<double>(part.second);
    for (const auto& [start, partLength] : parts) {
        const auto spectra = ClockSpectra::of(clean, start, partLength, transforms);
        const ClockLine found = spectra ? ClockLine::of(*spectra) : ClockLine();
        tries += static_cast<double>(found.binCount);
        lines.push_back(found);
        if (found.isBetterThan(line))
            line = found;
        done += static_cast<double>(partLength);
        if (goOn && !goOn(done / all))
            return best;
    }
    line.isPlain = line.isPlainAmong(lines, static_cast<double>(count) / clean.sampleRate);
    SymbolRateEstimate estimate = verdictOn(line, std::max(tries, 1.0));
    if (estimate.verdict != Verdict::None) {
        const ClockedPart part = longestPartOf(line, clean, transforms);
        estimate.symbolRate = part.rate;
        if (!line.isPeriodic) // random data show a code
            findCode(estimate, clean, part);
    }
    return estimate;
}

SymbolRateEstimate::Signal SymbolRateEstimate::signalOf(SignalSource& source,
                                                        const ChannelChoice& channel,
                                                        const ReceiverSettings& settings,
                                                        std::int64_t from)
{
    constexpr std::size_t blockLength = 8192;
    constexpr int longestMs = 3000; // of waiting for a live signal
    QElapsedTimer waiting;
    waiting.start();
    Signal signal;
    signal.sampleRate = source.facts().sampleRate;
    signal.isComplex = source.facts().isComplex || settings.isOn;
    const std::int64_t position = source.position();
    if (!source.facts().isLive && from != position && !source.seek(from))
        return signal;
    Baseband baseband(source, channel, settings);
    std::vector<double> values;
    for (std::size_t taken = 0; taken < maxSampleCount;) {
        const std::size_t got = source.read(values, std::min(blockLength, maxSampleCount - taken));
        if (got == 0 && source.facts().isLive && !source.hasEnded() &&
            waiting.elapsed() < longestMs)
            continue;
        if (got == 0)
            break;
        taken += got;
        baseband.take(values, signal.samples);
    }
    baseband.finish(signal.samples);
    source.seek(position);
    return signal;
}

std::vector<std::int64_t> SymbolRateEstimate::otherPlaces(SignalSource& source,
                                                          const ChannelChoice& channel,
                                                          std::int64_t first)
{
    constexpr auto length = static_cast<std::int64_t>(maxSampleCount);
    const std::int64_t count = source.facts().isLive ? 0 : source.sampleCount().value_or(0);
    std::vector<std::int64_t> looked{first};
    if (count <= length)
        return {};
    for (const std::int64_t place :
         {strongestStretch(source, channel, length), (count - length) / 2, count - length}) {
        const auto isSame = [place](std::int64_t other) {
            return std::abs(place - other) < length / 4;
        };
        if (std::none_of(looked.begin(), looked.end(), isSame))
            looked.push_back(place);
    }
    return {looked.begin() + 1, looked.end()};
}

bool SymbolRateEstimate::isBetterThan(const SymbolRateEstimate& other) const
{
    return verdict > other.verdict || (verdict == other.verdict && confidence > other.confidence);
}

SymbolRateEstimate SymbolRateEstimate::ofSource(SignalSource& source, const ChannelChoice& channel,
                                                const ReceiverSettings& settings, const GoOn& goOn)
{
    bool isEnded = false;
    const GoOn goOnHere = [&goOn, &isEnded](double part) {
        isEnded = goOn && !goOn(part);
        return !isEnded;
    };
    SymbolRateEstimate best = of(signalOf(source, channel, settings, 0), goOnHere);
    if (best.verdict == Verdict::Sure || isEnded)
        return isEnded ? SymbolRateEstimate() : best;
    for (const std::int64_t place : otherPlaces(source, channel, 0)) {
        const SymbolRateEstimate here = of(signalOf(source, channel, settings, place), goOnHere);
        if (here.isBetterThan(best))
            best = here;
        if (best.verdict == Verdict::Sure || isEnded)
            break;
    }
    return isEnded ? SymbolRateEstimate() : best;
}

Message SymbolRateEstimate::message() const
{
    constexpr int digitCount = 7;
    const QString rate = QString::number(symbolRate, 'g', digitCount);
    if (otherRate) {
        const QString text =
            code == Code::Manchester
                ? tr("symbol rate: %1 Bd (unsure, %2 of 1), or %3 Bd: half bits of a Manchester "
                     "code have twice the rate of the bits")
                : tr("symbol rate: %1 Bd (unsure, %2 of 1), or %3 Bd: pulses that return to rest "
                     "fill half of their bits, and half bits have twice the rate");
        return text.arg(rate)
            .arg(confidence, 0, 'f', 2)
            .arg(QString::number(*otherRate, 'g', digitCount));
    }
    switch (verdict) {
    case Verdict::Sure:
        return tr("symbol rate: %1 Bd (sure)").arg(rate);
    case Verdict::Unsure:
        return tr("symbol rate: %1 Bd (unsure, %2 of 1); look whether the eye opens there, at half "
                  "or at twice of it")
            .arg(rate)
            .arg(confidence, 0, 'f', 2);
    case Verdict::None:
        break;
    }
    return {tr("symbol rate: none found"), Hint::SymbolRate};
}
