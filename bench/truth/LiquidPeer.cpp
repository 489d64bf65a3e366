// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#include <liquid/liquid.h>

namespace {

using Modulation = LinearSignal::Modulation;

constexpr unsigned reach = 24; // symbols of the matched filter on either side
constexpr unsigned phases = 128;
constexpr double largestWhole = 10.0; // samples a symbol that need no resampler

modulation_scheme schemeOf(Modulation modulation)
{
    switch (modulation) {
    case Modulation::Bpsk:
        return LIQUID_MODEM_BPSK;
    case Modulation::Psk8:
        return LIQUID_MODEM_PSK8;
    case Modulation::Qam16:
        return LIQUID_MODEM_QAM16;
    case Modulation::Qam64:
        return LIQUID_MODEM_QAM64;
    default:
        return LIQUID_MODEM_QPSK;
    }
}

class Liquid : public Peer
{
public:
    QString name() const override
    {
        return QStringLiteral("liquid-dsp %1").arg(QLatin1String(liquid_libversion()));
    }
    std::vector<std::vector<Symbol>> receive(const Signal& signal, const LinearSignal& kind,
                                             double carrier, double timingLoop,
                                             const std::vector<double>& carrierLoops) override;

private:
    static std::vector<Symbol> timed(std::vector<std::complex<float>> samples,
                                     const LinearSignal& kind, double bandwidth);
    static void follow(std::vector<Symbol>& symbols, const LinearSignal& kind, double bandwidth);
};

std::vector<std::vector<Peer::Symbol>> Liquid::receive(const Signal& signal,
                                                       const LinearSignal& kind, double carrier,
                                                       double timingLoop,
                                                       const std::vector<double>& carrierLoops)
{
    std::vector<std::complex<float>> samples;
    for (std::size_t n = 0; n < signal.size(); ++n)
        samples.emplace_back(
            signal[n] *
            std::polar(1.0, -2.0 * pi * std::fmod(carrier * static_cast<double>(n), 1.0)));
    const double delay = reach * kind.samplesPerSymbol;
    samples.resize(samples.size() + static_cast<std::size_t>(delay)); // push the last symbols out
    std::vector<std::vector<Symbol>> received(carrierLoops.size(),
                                              timed(samples, kind, timingLoop));
    for (std::size_t k = 0; k < carrierLoops.size(); ++k) {
        follow(received[k], kind, carrierLoops[k]);
        for (Symbol& symbol : received[k]) {
            symbol.position -= delay;
            symbol.phase += 2.0 * pi * carrier * symbol.position;
        }
    }
    return received;
}

std::vector<Peer::Symbol> Liquid::timed(std::vector<std::complex<float>> samples,
                                        const LinearSignal& kind, double bandwidth)
{
    const double perSymbol = kind.samplesPerSymbol;
    const bool isWhole = perSymbol == std::floor(perSymbol) && perSymbol <= largestWhole;
    const unsigned length = isWhole ? static_cast<unsigned>(perSymbol) : 4;
    double ratio = 1.0;
    if (!isWhole) {
        const auto resampler = msresamp_crcf_create(static_cast<float>(length / perSymbol), 80.0F);
        ratio = double{msresamp_crcf_get_rate(resampler)};
        std::vector<std::complex<float>> output(
            static_cast<std::size_t>(2.0 * ratio * static_cast<double>(samples.size())) + 64);
        unsigned written = 0;
        msresamp_crcf_execute(resampler, samples.data(), static_cast<unsigned>(samples.size()),
                              output.data(), &written);
        output.resize(written);
        samples.swap(output);
        msresamp_crcf_destroy(resampler);
    }
    const auto timing = symsync_crcf_create_rnyquist(LIQUID_FIRFILT_RRC, length, reach,
                                                     static_cast<float>(kind.rollOff), phases);
    symsync_crcf_set_lf_bw(timing, static_cast<float>(bandwidth));
    std::vector<Symbol> symbols;
    for (std::size_t n = 0; n < samples.size(); ++n) {
        std::complex<float> output[8];
        unsigned written = 0;
        symsync_crcf_execute(timing, &samples[n], 1, output, &written);
        for (unsigned k = 0; k < written; ++k)
            symbols.push_back(
                {Complex(output[k]),
                 (static_cast<double>(n) + double{symsync_crcf_get_tau(timing)}) / ratio, 0.0});
    }
    symsync_crcf_destroy(timing);
    return symbols;
}

void Liquid::follow(std::vector<Symbol>& symbols, const LinearSignal& kind, double bandwidth)
{
    std::vector<Complex> values;
    values.reserve(symbols.size());
    for (const Symbol& symbol : symbols)
        values.push_back(symbol.value);
    const double level = levelOf(values, kind);
    const auto oscillator = nco_crcf_create(LIQUID_VCO);
    nco_crcf_pll_set_bandwidth(oscillator, static_cast<float>(bandwidth));
    const auto decision = modemcf_create(schemeOf(kind.modulation));
    double phase = 0.0;
    for (Symbol& symbol : symbols) {
        std::complex<float> value;
        nco_crcf_mix_down(oscillator, std::complex<float>(level * symbol.value), &value);
        phase += std::remainder(double{nco_crcf_get_phase(oscillator)} - phase, 2.0 * pi);
        unsigned decided = 0;
        modemcf_demodulate(decision, value, &decided);
        nco_crcf_pll_step(oscillator, modemcf_get_demodulator_phase_error(decision));
        nco_crcf_step(oscillator);
        symbol = {Complex(value), symbol.position, phase};
    }
    nco_crcf_destroy(oscillator);
    modemcf_destroy(decision);
}

} // namespace

std::unique_ptr<Peer> liquidPeer() { return std::make_unique<Liquid>(); }
