// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ModulationSource.h"

#include "workbench/sources/Constants.h"

#include <cmath>
#include <complex>
#include <deque>
#include <iterator>
#include <random>

#include <liquid/liquid.h>

namespace {

using Sample = std::complex<float>;

constexpr unsigned sentPerSymbol = 4; // samples, enough for the pulses' bandwidth
constexpr unsigned halfLength = 10;   // of the pulses, symbols
constexpr float rollOff = 0.35F;
constexpr float startDelay = 0.3F;   // by which the receiver is late at first, sent samples
constexpr unsigned filterCount = 32; // of the matched filter, for fractions of a sample

/// Lengths of the preamble before the first sample that is passed on.
struct Stage
{
    bool isPreamble;
    float clock; // bandwidths of the receiver's loops
    float carrier;
    int symbolCount;
};
// Wide at first, to lock; narrow in the end, so that the noise of the symbols does not matter. A
// wider loop of the clock could run away before it locks. The last stage corrects the clock's rate
// by less than single precision can express, so the stage before it has to find the rate.
constexpr Stage stages[] = {{true, 2e-3F, 4e-4F, 2000},
                            {true, 1e-3F, 4e-4F, 3000},
                            {true, 3e-4F, 1e-4F, 3000},
                            {false, 1e-4F, 2e-5F, 3000}};

} // namespace

double ModulationSettings::merDb() const
{
    // The loop's gain of the phase is the root of that of the frequency.
    const auto gain = std::sqrt(static_cast<double>(std::end(stages)[-1].carrier));
    return -10.0 *
           std::log10(std::pow(10.0, -snrDb / 10.0) + phaseNoise * phaseNoise / (2.0 * gain));
}

struct ModulationSource::Transmitter
{
    explicit Transmitter(const ModulationSettings& settings)
        : pulses(firinterp_crcf_create_prototype(LIQUID_FIRFILT_RRC, sentPerSymbol, halfLength,
                                                 rollOff, startDelay),
                 firinterp_crcf_destroy)
        , data(settings.seed)
    {}
    void sendSymbol(Sample (&samples)[sentPerSymbol])
    {
        Sample symbol;
        const unsigned bits = static_cast<unsigned>(data()) >> (32U - modemcf_get_bps(modem.get()));
        modemcf_modulate(modem.get(), bits, &symbol);
        firinterp_crcf_execute(pulses.get(), symbol, samples);
    }

    LiquidHandle<modemcf> modem{nullptr, modemcf_destroy};
    LiquidHandle<firinterp_crcf> pulses;
    std::mt19937 data;
};

struct ModulationSource::Channel
{
    explicit Channel(const ModulationSettings& settings)
        : clock(resamp_crcf_create(static_cast<float>(1.0 + settings.clockOffset), halfLength,
                                   0.45F, 60.0F, 64),
                resamp_crcf_destroy)
        , random(settings.seed + 1U)
        , phaseStep(2.0 * pi * settings.carrierOffset / sentPerSymbol)
    {
        setNoise(settings);
    }
    void setNoise(const ModulationSettings& settings)
    {
        noise = std::sqrt(0.5 * sentPerSymbol * std::pow(10.0, -settings.snrDb / 10.0));
        phaseNoise = settings.phaseNoise / std::sqrt(sentPerSymbol);
    }
    /// @return number of samples that come out, at most two.
    unsigned run(Sample sample, Sample (&output)[2])
    {
        unsigned count = 0;
        resamp_crcf_execute(clock.get(), sample, output, &count);
        for (unsigned i = 0; i < count; ++i) {
            phase = std::remainder(phase + phaseStep + phaseNoise * normal(random), 2.0 * pi);
            const double real = noise * normal(random);
            output[i] = output[i] * Sample(std::polar(1.0, phase)) +
                        Sample(std::complex<double>(real, noise * normal(random)));
        }
        return count;
    }

    LiquidHandle<resamp_crcf> clock;
    std::mt19937 random;
    std::normal_distribution<double> normal;
    double noise = 0.0; // RMS of I and of Q, where the power of the signal is 1
    double phaseStep;
    double phaseNoise = 0.0;
    double phase = 0.0;
};

struct ModulationSource::Receiver
{
    Receiver()
        : clock(symsync_crcf_create_rnyquist(LIQUID_FIRFILT_RRC, sentPerSymbol, halfLength, rollOff,
                                             filterCount),
                symsync_crcf_destroy)
        , carrier(nco_crcf_create(LIQUID_VCO), nco_crcf_destroy)
    {
        symsync_crcf_set_output_rate(clock.get(), samplesPerSymbol);
    }
    void receive(Sample sample)
    {
        Sample output[2 * samplesPerSymbol];
        unsigned count = 0;
        symsync_crcf_execute(clock.get(), &sample, 1, output, &count);
        for (unsigned i = 0; i < count; ++i) {
            nco_crcf_mix_down(carrier.get(), output[i], &output[i]);
            received.push_back(output[i]);
            if (number++ % samplesPerSymbol == 0)
                followCarrier(output[i]);
            nco_crcf_step(carrier.get());
        }
    }
    void followCarrier(Sample symbol)
    {
        unsigned decision = 0;
        modemcf_demodulate(modem.get(), symbol, &decision);
        nco_crcf_pll_step(carrier.get(), modemcf_get_demodulator_phase_error(modem.get()));
    }

    LiquidHandle<symsync_crcf> clock;
    LiquidHandle<nco_crcf> carrier;
    LiquidHandle<modemcf> modem{nullptr, modemcf_destroy};
    std::int64_t number = 0; // of the next sample
    std::deque<Sample> received;
};

ModulationSource::ModulationSource(const ModulationSettings& settings)
    : m_settings(settings)
{
    m_facts.name = tr("Built-in %1 signal").arg(modulationKinds::name(settings.modulation));
    m_facts.sampleRate = settings.sampleRate;
    m_facts.isComplex = true;
    m_facts.symbolRate = settings.sampleRate / samplesPerSymbol;
    m_facts.firstSymbol = 0.0;
}

ModulationSource::~ModulationSource() = default;

void ModulationSource::setSnr(double decibels)
{
    m_settings.snrDb = decibels;
    changeNoise();
}

void ModulationSource::setPhaseNoise(double rms)
{
    m_settings.phaseNoise = rms;
    changeNoise();
}

void ModulationSource::changeNoise()
{
    if (m_channel)
        m_channel->setNoise(m_settings);
}

void ModulationSource::setCarrierError(double cyclesPerSymbol)
{
    m_settings.carrierError = cyclesPerSymbol;
}

void ModulationSource::start()
{
    m_phase = 0.0;
    m_transmitter = std::make_unique<Transmitter>(m_settings);
    m_channel = std::make_unique<Channel>(m_settings);
    m_receiver = std::make_unique<Receiver>();
    for (const Stage& stage : stages) {
        // No other scheme has so few phases to lock to by mistake.
        const ModulationKind data = m_settings.modulation;
        const auto preamble = data == ModulationKind::Bpsk ? data : ModulationKind::Qpsk;
        for (LiquidHandle<modemcf>* modem : {&m_transmitter->modem, &m_receiver->modem})
            *modem = modulationKinds::modem(stage.isPreamble ? preamble : data);
        symsync_crcf_set_lf_bw(m_receiver->clock.get(), stage.clock);
        nco_crcf_pll_set_bandwidth(m_receiver->carrier.get(), stage.carrier);
        skip(static_cast<std::size_t>(stage.symbolCount) * std::size_t{samplesPerSymbol});
    }
}

void ModulationSource::runSymbol()
{
    Sample sent[sentPerSymbol];
    m_transmitter->sendSymbol(sent);
    for (const Sample sample : sent) {
        Sample heard[2];
        const unsigned count = m_channel->run(sample, heard);
        for (unsigned i = 0; i < count; ++i)
            m_receiver->receive(heard[i]);
    }
}

void ModulationSource::skip(std::size_t count)
{
    if (!m_receiver)
        start();
    auto& received = m_receiver->received;
    while (received.size() < count)
        runSymbol();
    received.erase(received.begin(), received.begin() + static_cast<std::ptrdiff_t>(count));
}

std::size_t ModulationSource::read(std::vector<double>& block, std::size_t count)
{
    if (!m_receiver)
        start();
    auto& received = m_receiver->received;
    block.clear();
    const double step = 2.0 * pi * m_settings.carrierError / samplesPerSymbol;
    for (std::size_t i = 0; i < count; ++i) {
        while (received.empty())
            runSymbol();
        const auto sample = std::complex<double>(received.front()) * std::polar(1.0, m_phase);
        block.push_back(sample.real());
        block.push_back(sample.imag());
        received.pop_front();
        m_phase = std::remainder(m_phase + step, 2.0 * pi);
    }
    m_position += static_cast<std::int64_t>(count);
    return count;
}

bool ModulationSource::seek(std::int64_t position)
{
    if (position < 0)
        return false;
    if (position == 0) {
        m_receiver.reset();
    } else {
        // Moves to the same phase of a symbol.
        const std::int64_t distance = (position - m_position) % samplesPerSymbol;
        skip(static_cast<std::size_t>((distance + samplesPerSymbol) % samplesPerSymbol));
    }
    m_position = position;
    return true;
}
