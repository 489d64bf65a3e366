// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Reads pipes into which anything is written in pieces, and radios that say and do anything.
#include "Attack.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/sources/StreamSource.h"

#include <SoapySDR/Device.hpp>
#include <SoapySDR/Registry.hpp>
#include <SoapySDR/Version.hpp>

#include <complex>
#include <stdexcept>

#include <unistd.h>

namespace {

constexpr int mostReads = 100;

/// Reads once, and looks whether it fits together.
void readOnce(SignalSource& source, std::size_t count, std::vector<double>& all)
{
    std::vector<double> block;
    const std::int64_t before = source.position();
    const std::size_t samples = source.read(block, count);
    require(samples <= count &&
                block.size() == samples * static_cast<std::size_t>(source.facts().valueCount()) &&
                source.position() >= before + static_cast<std::int64_t>(samples), // or lost some
            "a block");
    source.trouble();
    all.insert(all.end(), block.begin(), block.end());
}

void readPipe(Bytes& input)
{
    const char* const names[] = {"cf32", "cu8", "ri16", "ci32_be", "rf64", "ru64_be", "ri8"};
    const SampleFormat format = *SampleFormat::parse(QString::fromLatin1(input.oneOf(names)));
    int ends[2];
    require(pipe(ends) == 0, "a pipe");
    StreamSource source(QStringLiteral("any"), ends[0], format, 1e6);
    std::vector<char> sent;
    std::vector<double> all;
    while (!input.isEmpty() && sent.size() < 500000) {
        const std::size_t length = 1 + input.below(255) * (input.below(8) == 0 ? 100 : 1);
        std::vector<char> piece(length);
        for (char& byte : piece)
            byte = input.isEmpty() ? '\x55' : input.take<char>();
        require(write(ends[1], piece.data(), length) == static_cast<ssize_t>(length), "a write");
        sent.insert(sent.end(), piece.begin(), piece.end());
        if (input.flag())
            readOnce(source, input.take<std::uint16_t>(), all);
    }
    close(ends[1]);
    while (!source.hasEnded())
        readOnce(source, 5000, all);
    close(ends[0]);
    const std::size_t size = format.byteCount() * static_cast<std::size_t>(format.valueCount());
    std::vector<double> truth(sent.size() / size * static_cast<std::size_t>(format.valueCount()));
    format.convert(sent.data(), truth.size(), truth.data());
    const auto isSame = [](double a, double b) { return a == b || std::isnan(a); };
    require(std::equal(all.begin(), all.end(), truth.begin(), truth.end(), isSame),
            "what was sent");
    require(source.trouble().has_value(), "the end");
}

Bytes* radioInput = nullptr;

/// A radio whose driver does whatever the input says.
struct AnyRadio : SoapySDR::Device
{
    static void mayThrow()
    {
        if (radioInput->below(32) == 1)
            throw std::runtime_error("\x1b[2J");
    }
    static int anyResult()
    {
        return radioInput->below(8) == 1 ? radioInput->take<std::int8_t>() : 0;
    }
    std::size_t getNumChannels(int) const override { return 1 + radioInput->below(3); }
    void setSampleRate(int, std::size_t, double hertz) override
    {
        mayThrow();
        rate = radioInput->below(8) == 1 ? radioInput->number() : hertz;
    }
    double getSampleRate(int, std::size_t) const override { return rate; }
    SoapySDR::Stream* setupStream(int, const std::string&, const std::vector<std::size_t>&,
                                  const SoapySDR::Kwargs&) override
    {
        mayThrow();
        return radioInput->below(32) == 1 ? nullptr : reinterpret_cast<SoapySDR::Stream*>(this);
    }
    void closeStream(SoapySDR::Stream*) override { mayThrow(); }
    std::size_t getStreamMTU(SoapySDR::Stream*) const override
    {
        return radioInput->oneOf({std::size_t{0}, std::size_t{1}, std::size_t{5000}, SIZE_MAX});
    }
    int activateStream(SoapySDR::Stream*, int, long long, std::size_t) override
    {
        return anyResult();
    }
    int readStream(SoapySDR::Stream*, void* const* buffers, std::size_t count, int&, long long&,
                   long) override
    {
        mayThrow();
        const int result = anyResult();
        const std::size_t samples = std::min<std::size_t>(radioInput->take<std::uint16_t>(), count);
        std::fill_n(static_cast<std::complex<float>*>(buffers[0]), samples, 0.5F);
        return result < 0 ? result : static_cast<int>(samples);
    }
    double rate = 0.0;
};

/// No other radio is there, whatever modules are installed.
const bool isAlone = qputenv("SOAPY_SDR_ROOT", "/nonexistent");
const SoapySDR::Registry registry(
    "any",
    [](const SoapySDR::Kwargs&) {
        return SoapySDR::KwargsList(1, {{"label", "\x9b\xff any"}});
    },
    [](const SoapySDR::Kwargs&) -> SoapySDR::Device* {
        AnyRadio::mayThrow();
        return new AnyRadio;
    },
    SOAPY_SDR_ABI_VERSION);

void readRadio(Bytes& input)
{
    radioInput = &input;
    QString address = QStringLiteral("soapy://driver=any,rate=1e6");
    for (unsigned entries = input.below(4); entries > 0; --entries) {
        const char* const keys[] = {"rate", "freq", "gain", "antenna", "channel", "=", "serial"};
        address += QLatin1Char(',') + QLatin1String(input.oneOf(keys)) + QLatin1Char('=');
        if (input.flag())
            address += QString::number(input.number());
        for (unsigned length = input.below(6); length > 0; --length)
            address += QChar(input.take<char16_t>());
    }
    Recording::Options options;
    if (input.flag())
        options.sampleRate = 1e6;
    const auto recording = RecordingOpener::open(address, options);
    require(recording ? recording->source != nullptr : !recording.error().sentence.isEmpty(),
            "a signal or a reason");
    std::vector<double> all;
    for (int k = 0; recording && k < mostReads && !input.isEmpty(); ++k) {
        if (!recording->source->hasEnded())
            readOnce(*recording->source, input.take<std::uint16_t>(), all);
    }
}

} // namespace

void attackStream(Bytes& input)
{
    if (input.flag())
        readPipe(input);
    else
        readRadio(input);
}
