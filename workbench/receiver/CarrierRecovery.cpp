// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierRecovery.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int perSymbol = ReceiverSettings::samplesPerSymbol;
constexpr std::size_t padding = 4;    // of the search, against the window
constexpr double significance = 24.0; // of the line against the mean; noise does not reach it
constexpr double startQuality = 0.6;
constexpr double lockQuality = 0.3;
constexpr float silence = 1e-3F; // of the mean power of symbols

struct Loop
{
    modulation_scheme scheme;
    unsigned power;
    std::size_t windowSymbols;
    float bandwidth;
    double smoothing;
};
constexpr Loop loops[] = {{LIQUID_MODEM_BPSK, 2, 256, 1.6e-2F, 1.0 / 64.0},
                          {LIQUID_MODEM_QPSK, 4, 256, 8e-3F, 1.0 / 64.0},
                          {LIQUID_MODEM_PSK8, 8, 512, 1e-3F, 1.0 / 128.0},
                          {LIQUID_MODEM_QAM16, 4, 1024, 5e-4F, 1.0 / 512.0},
                          {LIQUID_MODEM_QAM64, 4, 2048, 2e-4F, 1.0 / 512.0}};

std::complex<double> power(std::complex<double> value, unsigned exponent)
{
    std::complex<double> result = 1.0;
    for (unsigned k = 0; k < exponent; ++k)
        result *= value;
    return result;
}

} // namespace

CarrierRecovery::CarrierRecovery()
    : m_carrier(nco_crcf_create(LIQUID_VCO), nco_crcf_destroy)
{}

BasebandFormat CarrierRecovery::configure(const ReceiverSettings& settings,
                                          const BasebandFormat& format)
{
    m_isOn = settings.modulation && format.hasSymbolClock && !format.isDemodulated;
    if (m_isOn) {
        const Loop& loop = loops[static_cast<int>(*settings.modulation)];
        m_modem = {modemcf_create(loop.scheme), modemcf_destroy};
        m_power = loop.power;
        m_windowSymbols = loop.windowSymbols;
        m_smoothing = loop.smoothing;
        nco_crcf_pll_set_bandwidth(m_carrier.get(), loop.bandwidth);
        m_symbolRate = format.sampleRate / perSymbol;
        const auto points = ReceiverSettings::pointsOf(*settings.modulation);
        std::complex<double> sum = 0.0;
        m_meanSquare = 0.0;
        m_spacing = std::norm(points[0] - points[1]);
        for (const auto& point : points) {
            sum += power(point, m_power);
            m_meanSquare += std::pow(std::norm(point), 2) / static_cast<double>(points.size());
            m_hasAmplitudes = std::abs(std::norm(point) - 1.0) > 0.01;
            for (const auto& other : points) {
                if (&other != &point)
                    m_spacing = std::min(m_spacing, std::norm(point - other));
            }
        }
        m_target = std::arg(sum);
    }
    reset();
    return format;
}

void CarrierRecovery::reset()
{
    m_waiting.clear();
    m_number = 0;
    m_isTracking = false;
    m_gain = 1.0;
    m_meanPower = 1.0;
    m_quality = 0.0;
    m_offset = 0.0;
    nco_crcf_reset(m_carrier.get());
}

void CarrierRecovery::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    std::vector<Sample> output;
    output.reserve(block.samples.size());
    for (const Sample sample : block.samples) {
        if (m_isTracking) {
            track(sample, output);
            continue;
        }
        m_waiting.push_back(sample);
        if (m_waiting.size() < windowLength())
            continue;
        if (acquire())
            passOn(m_waiting.size(), output);
        else // a burst may start in its second half
            passOn(m_waiting.size() / 2, output);
    }
    block.samples.swap(output);
}

void CarrierRecovery::finish(BasebandBlock& block)
{
    process(block);
    if (m_isOn)
        passOn(m_waiting.size(), block.samples);
}

/// Puts out the first samples that wait. The loop, where it follows, may let go again among them.
void CarrierRecovery::passOn(std::size_t count, std::vector<Sample>& output)
{
    const std::vector<Sample> samples(m_waiting.begin(),
                                      m_waiting.begin() + static_cast<std::ptrdiff_t>(count));
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(count));
    for (const Sample sample : samples) {
        if (m_isTracking)
            track(sample, output);
        else
            output.push_back(turnBack(sample));
    }
}

/// Takes the carrier off the next sample. The oscillator goes from symbol to symbol, as the loop
/// does: going from sample to sample, it would overshoot at each correction. Between symbols the
/// phase runs evenly.
CarrierRecovery::Sample CarrierRecovery::turnBack(Sample sample)
{
    if (m_number++ % perSymbol == 0) {
        const float frequency = nco_crcf_get_frequency(m_carrier.get());
        m_phasor = std::polar(1.0F, -nco_crcf_get_phase(m_carrier.get()));
        m_step = std::polar(1.0F, -frequency / static_cast<float>(perSymbol));
        nco_crcf_step(m_carrier.get());
    } else {
        m_phasor *= m_step;
    }
    return sample * m_phasor * static_cast<float>(m_gain);
}

/// Looks for a carrier in the window; the loop then starts with its first sample.
bool CarrierRecovery::acquire()
{
    const std::size_t size = m_windowSymbols * padding;
    std::vector<Sample> line(size);
    double power = 0.0;
    double squares = 0.0;
    double energy = 0.0;
    for (std::size_t k = 0; k < m_windowSymbols; ++k) {
        const std::complex<double> symbol(m_waiting[k * perSymbol]);
        power += std::norm(symbol);
        squares += std::norm(symbol) * std::norm(symbol);
        const double magnitude = std::max(std::abs(symbol), 1e-12);
        // Of amplitudes only those tell something that the modulation has.
        const auto undone = ::power(m_hasAmplitudes ? symbol : symbol / magnitude, m_power);
        energy += std::norm(undone);
        line[k] = Sample(undone);
    }
    // A burst may begin in the window, where the mean would tell too little.
    m_meanPower = std::max(power > 0.0 ? squares / power / m_meanSquare : 0.0, 1e-12);
    m_gain = 1.0 / std::sqrt(m_meanPower);
    std::vector<Sample> spectrum(size);
    fft_run(static_cast<unsigned>(size), line.data(), spectrum.data(), LIQUID_FFT_FORWARD, 0);
    const auto strength = [&](std::size_t bin) { return double{std::norm(spectrum[bin % size])}; };
    std::size_t best = 0;
    for (std::size_t bin = 1; bin < size; ++bin)
        best = strength(bin) > strength(best) ? bin : best;
    if (!(strength(best) > significance * energy))
        return false;
    // The top of the parabola through the best one and its neighbours.
    const double left = std::sqrt(strength(best + size - 1));
    const double right = std::sqrt(strength(best + 1));
    const double curvature = left - 2.0 * std::sqrt(strength(best)) + right;
    const double part = curvature < 0.0 ? 0.5 * (left - right) / curvature : 0.0;
    double turn = 2.0 * pi * (static_cast<double>(best) + part) / static_cast<double>(size);
    turn = std::remainder(turn, 2.0 * pi); // of a symbol, times the power
    std::complex<double> sum = 0.0;
    for (std::size_t k = 0; k < m_windowSymbols; ++k)
        sum += std::complex<double>(line[k]) * std::polar(1.0, -turn * static_cast<double>(k));
    m_offset = turn / m_power;
    nco_crcf_set_frequency(m_carrier.get(), static_cast<float>(m_offset));
    nco_crcf_set_phase(m_carrier.get(), static_cast<float>((std::arg(sum) - m_target) / m_power));
    m_isTracking = true;
    m_quality = startQuality;
    m_phaseError = 0.0;
    return true;
}

void CarrierRecovery::track(Sample sample, std::vector<Sample>& output)
{
    if (!m_isTracking) {
        m_waiting.push_back(sample);
        return;
    }
    const bool isSymbol = m_number % perSymbol == 0;
    output.push_back(turnBack(sample));
    if (isSymbol)
        followSymbol(output.back());
}

void CarrierRecovery::followSymbol(Sample symbol)
{
    unsigned decision = 0;
    modemcf_demodulate(m_modem.get(), symbol, &decision);
    const float error = modemcf_get_demodulator_phase_error(m_modem.get());
    nco_crcf_pll_step(m_carrier.get(), error);
    Sample ideal;
    modemcf_get_demodulator_sample(m_modem.get(), &ideal);

    const double frequency =
        std::remainder(double{nco_crcf_get_frequency(m_carrier.get())}, 2.0 * pi);
    m_offset += m_smoothing * (frequency - m_offset);
    const double angle =
        std::arg(std::complex<double>(symbol) * std::conj(std::complex<double>(ideal)));
    m_phaseError += m_smoothing * (angle * angle - m_phaseError);
    const double power = std::norm(std::complex<double>(symbol)) / (m_gain * m_gain);
    m_meanPower += m_smoothing * (power - m_meanPower);
    m_gain = 1.0 / std::sqrt(std::max(m_meanPower, 1e-12));

    // Angles of guesses are even between two points: their mean cosine is 0. Of amplitudes, what is
    // off counts against the spacing of points, the mean square of an even error being a sixth.
    double quality = std::cos(m_power * angle);
    if (m_hasAmplitudes) {
        quality = 1.0 - 6.0 * double{std::norm(symbol - ideal)} / m_spacing;
    } else if (std::norm(symbol) < silence) {
        quality = 0.0; // no angle
    }
    m_quality += m_smoothing * (quality - m_quality);
    if (m_quality < lockQuality) {
        m_isTracking = false;
        m_phaseError = 0.0;
    }
}

StageReport CarrierRecovery::report() const
{
    StageReport report{StageReport::Stage::Carrier, m_isOn, {}, {}};
    if (!m_isOn)
        return report;
    report.isLocked = m_isTracking;
    if (m_isTracking)
        report.readings = {
            {StageReport::Quantity::CarrierOffset, m_offset * m_symbolRate / (2.0 * pi)},
            {StageReport::Quantity::PhaseError, std::sqrt(m_phaseError) * 180.0 / pi}};
    return report;
}
