// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of receiving QPSK of 1 MS/s with all stages: shift, channel filter, squelch, gain, matched
// filter, symbol timing, carrier. Counters are medians of all rounds, in which the peers take
// turns:
//   cores            processor time over the signal's: 0.5 is half a core;
//   liquid-dsp/ours  that of liquid-dsp's objects, in the same order, over it;
//   GNU Radio/ours   that of GNU Radio's blocks; 0 where it is not installed.
// The peers' matched filters are those of their clock recovery, and their clock and carrier are
// control loops.
#include "workbench/receiver/Receiver.h"

#include <benchmark/benchmark.h>

#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>

#include <liquid/liquid.h>

namespace {

using Sample = std::complex<float>;

constexpr double sampleRate = 1e6;
constexpr std::size_t sampleCount = 1'000'000;
constexpr std::size_t blockLength = 16384; // as the workbench reads
constexpr double shift = 50e3;             // by which the carrier is too low, Hz
constexpr double offset = 400.0;           // and what the shift leaves of it
constexpr float rollOff = 0.35F;
constexpr double noise = 0.1; // r.m.s. over that of the signal, in the bandwidth of a symbol rate
constexpr float pi = 3.14159265358979F;

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<Sample> makeSignal(unsigned perSymbol)
{
    constexpr unsigned reach = 12; // symbols
    std::mt19937 generator(1);
    std::normal_distribution<double> gauss;
    const auto pulses =
        firinterp_crcf_create_prototype(LIQUID_FIRFILT_RRC, perSymbol, reach, rollOff, 0.0F);
    std::vector<Sample> signal(sampleCount);
    for (std::size_t k = 0; k + perSymbol <= sampleCount; k += perSymbol) {
        const Sample symbol = std::polar(1.0F, 0.25F * pi + 0.5F * pi * float(generator() % 4));
        firinterp_crcf_execute(pulses, symbol, &signal[k]);
    }
    firinterp_crcf_destroy(pulses);
    const double deviation = noise * std::sqrt(0.5 * perSymbol);
    for (std::size_t k = 0; k < sampleCount; ++k) {
        const double cycles = (offset - shift) / sampleRate * static_cast<double>(k);
        const std::complex<double> turned =
            std::complex<double>(signal[k]) * std::polar(1.0, 2.0 * M_PI * std::fmod(cycles, 1.0));
        signal[k] = Sample(turned + deviation * std::complex(gauss(generator), gauss(generator)));
    }
    return signal;
}

/// What is received of the signal: symbols whose clock and carrier are held.
std::size_t receive(const std::vector<double>& values, unsigned perSymbol)
{
    SignalFacts input;
    input.sampleRate = sampleRate;
    input.isComplex = true;
    ReceiverSettings settings;
    settings.isOn = true;
    settings.shift = shift;
    settings.symbolRate = sampleRate / perSymbol;
    settings.bandwidth = 1.5 * *settings.symbolRate;
    settings.squelch = -20.0;
    settings.rollOff = double{rollOff};
    settings.modulation = ReceiverSettings::Modulation::Qpsk;
    Receiver receiver(input, ChannelChoice(0), settings);
    std::vector<double> part;
    std::vector<SignalBlock> blocks;
    std::size_t count = 0;
    for (std::size_t k = 0; k < sampleCount; k += blockLength) {
        const auto end = 2 * std::min(k + blockLength, sampleCount);
        part.assign(values.begin() + static_cast<std::ptrdiff_t>(2 * k),
                    values.begin() + static_cast<std::ptrdiff_t>(end));
        receiver.process(static_cast<std::int64_t>(k), part, blocks);
        for (const SignalBlock& block : blocks)
            for (const Symbol& symbol : block.symbols)
                count += symbol.state == SymbolState::Good ? 1 : 0;
        blocks.clear();
    }
    return count;
}

/// The same by objects of liquid-dsp, each at its usual setting. @return symbols near to a point.
std::size_t receiveByLiquid(std::vector<Sample> block, unsigned perSymbol)
{
    constexpr unsigned reach = 12;
    constexpr unsigned phases = 32;
    const auto oscillator = nco_crcf_create(LIQUID_VCO);
    nco_crcf_set_frequency(oscillator, float(2.0 * M_PI * shift / sampleRate));
    const float cutOff = 0.75F / float(perSymbol);
    const auto filter = firfilt_crcf_create_kaiser(
        estimate_req_filter_len(0.3F * cutOff, 60.0F) | 1U, cutOff, 60.0F, 0.0F);
    firfilt_crcf_set_scale(filter, 2.0F * cutOff);
    const auto gain = agc_crcf_create();
    agc_crcf_set_bandwidth(gain, 1e-3F);
    agc_crcf_squelch_enable(gain);
    agc_crcf_squelch_set_threshold(gain, -20.0F);
    const auto timing =
        symsync_crcf_create_rnyquist(LIQUID_FIRFILT_RRC, perSymbol, reach, rollOff, phases);
    symsync_crcf_set_lf_bw(timing, 0.01F);
    const auto carrier = nco_crcf_create(LIQUID_VCO);
    nco_crcf_pll_set_bandwidth(carrier, 0.01F);
    const auto decision = modemcf_create(LIQUID_MODEM_QPSK);

    std::vector<Sample> symbols(blockLength);
    std::size_t count = 0;
    for (std::size_t k = 0; k < sampleCount; k += blockLength) {
        const auto length = static_cast<unsigned>(std::min(blockLength, sampleCount - k));
        Sample* samples = &block[k];
        nco_crcf_mix_block_up(oscillator, samples, samples, length);
        firfilt_crcf_execute_block(filter, samples, length, samples);
        agc_crcf_execute_block(gain, samples, length, samples);
        unsigned symbolCount = 0;
        symsync_crcf_execute(timing, samples, length, symbols.data(), &symbolCount);
        for (unsigned n = 0; n < symbolCount; ++n) {
            Sample value;
            unsigned decided = 0;
            nco_crcf_mix_down(carrier, symbols[n], &value);
            modemcf_demodulate(decision, value, &decided);
            nco_crcf_pll_step(carrier, modemcf_get_demodulator_phase_error(decision));
            nco_crcf_step(carrier);
            count += modemcf_get_demodulator_evm(decision) < 0.5F ? 1 : 0;
        }
    }
    nco_crcf_destroy(oscillator);
    firfilt_crcf_destroy(filter);
    agc_crcf_destroy(gain);
    symsync_crcf_destroy(timing);
    nco_crcf_destroy(carrier);
    modemcf_destroy(decision);
    return count;
}

/// Runs a flowgraph of GNU Radio in a process of its own.
/// @return processor time, s, of the flowgraph alone; none where GNU Radio is not installed.
std::optional<double> receiveByGnuRadio(const QString& file, unsigned perSymbol)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start("/usr/bin/python3", {ORVANE_PEER_SCRIPT, file, QString::number(sampleRate),
                                       QString::number(perSymbol), QString::number(shift)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput().trimmed().toDouble();
}

void receiver(benchmark::State& state)
{
    const auto perSymbol = static_cast<unsigned>(state.range(0));
    const std::vector<Sample> signal = makeSignal(perSymbol);
    std::vector<double> values;
    for (const Sample& sample : signal)
        values.insert(values.end(), {double{sample.real()}, double{sample.imag()}});
    const QTemporaryDir folder;
    QFile file(folder.filePath("signal.cf32"));
    const auto size = static_cast<qint64>(sampleCount) * qint64{sizeof(Sample)};
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(signal.data()), size) != size || !file.flush()) {
        state.SkipWithError("the signal cannot be written");
        return;
    }
    constexpr double seconds = sampleCount / sampleRate;
    const std::size_t enough = sampleCount / perSymbol * 9 / 10;
    std::vector<double> ours, liquid, gnuRadio;
    for ([[maybe_unused]] auto _ : state) {
        double start = processorSeconds();
        const std::size_t received = receive(values, perSymbol);
        ours.push_back((processorSeconds() - start) / seconds);
        start = processorSeconds();
        const std::size_t receivedByLiquid = receiveByLiquid(signal, perSymbol);
        liquid.push_back((processorSeconds() - start) / seconds);
        if (const auto time = receiveByGnuRadio(file.fileName(), perSymbol))
            gnuRadio.push_back(*time / seconds);
        if (received < enough || receivedByLiquid < enough) {
            state.SkipWithError("the signal was not received");
            return;
        }
        state.SetIterationTime(ours.back() * seconds);
    }
    state.counters["cores"] = median(ours);
    state.counters["liquid-dsp/ours"] = median(liquid) / median(ours);
    state.counters["GNU Radio/ours"] = gnuRadio.empty() ? 0.0 : median(gnuRadio) / median(ours);
}

BENCHMARK(receiver)
    ->Name("symbols of a million samples/ours")
    ->Arg(8)
    ->Arg(4)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
