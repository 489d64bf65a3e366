// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"

#include <SoapySDR/Device.hpp>
#include <SoapySDR/Errors.hpp>
#include <SoapySDR/Registry.hpp>
#include <SoapySDR/Version.hpp>

#include <complex>

namespace {

constexpr int throws = -1000;
std::vector<int> results; // of one read after the other
int openCount = 0;        // of devices and streams

/// A radio whose samples count up.
struct TestRadio : SoapySDR::Device
{
    TestRadio() { ++openCount; }
    ~TestRadio() override { --openCount; }
    std::size_t getNumChannels(int) const override { return 2; }
    void setSampleRate(int, std::size_t, double hertz) override
    {
        rate = hertz;
        if (rate > 1e7)
            throw std::runtime_error("too fast");
    }
    double getSampleRate(int, std::size_t) const override { return rate; }
    SoapySDR::Stream* setupStream(int, const std::string&, const std::vector<std::size_t>&,
                                  const SoapySDR::Kwargs&) override
    {
        ++openCount;
        return reinterpret_cast<SoapySDR::Stream*>(this);
    }
    void closeStream(SoapySDR::Stream*) override { --openCount; }
    int readStream(SoapySDR::Stream*, void* const* buffers, std::size_t, int&, long long&,
                   long) override
    {
        const int result = next < results.size() ? results[next++] : SOAPY_SDR_TIMEOUT;
        if (result == throws)
            throw std::runtime_error("unplugged");
        for (int i = 0; i < result; ++i)
            static_cast<std::complex<float>*>(buffers[0])[i] = {sent++, -1.0F};
        return result;
    }
    std::size_t next = 0;
    float sent = 0.0F;
    double rate = 0.0;
};

const SoapySDR::Registry registry(
    "orvanetest",
    [](const SoapySDR::Kwargs& wanted) {
        const auto driver = wanted.find("driver");
        const bool isMeant = driver == wanted.end() || driver->second == "orvanetest";
        return SoapySDR::KwargsList(isMeant ? 1 : 0, {{"label", "Test tone"}});
    },
    [](const SoapySDR::Kwargs&) -> SoapySDR::Device* { return new TestRadio; },
    SOAPY_SDR_ABI_VERSION);

/// Only our radio is there, whatever modules are installed.
const bool isAlone = qputenv("SOAPY_SDR_ROOT", "/nonexistent");

using Soapy = Live;

TEST_F(Soapy, PlaysUntilItFailsAndCountsWhatIsLost)
{
    for (const int failure : {SOAPY_SDR_STREAM_ERROR, throws}) {
        results = {3, SOAPY_SDR_OVERFLOW, SOAPY_SDR_TIMEOUT, 0, SOAPY_SDR_CORRUPTION, 2, failure};
        source = openLive("soapy://driver=orvanetest, rate=2e6,channel=1", "", 0.0).value().source;
        EXPECT_EQ(source->facts().sampleRate, 2e6);
        all.clear();
        readUntil([&] { return source->hasEnded(); });
        EXPECT_THAT(all, testing::ElementsAre(0, -1, 1, -1, 2, -1, 3, -1, 4, -1));
        EXPECT_EQ(source->position(), 5 + 2) << "of those that are lost one each";
        EXPECT_TRUE(says("has failed"));
        EXPECT_EQ(openCount, 0);
    }
}

TEST_F(Soapy, ThatCannotBeOpenedSaysWhatThereIs)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "driver=orvanetest,label=Test tone"},
        {"driver=nosuch,rate=1e6", "driver=orvanetest,label=Test tone"},
        {"driver=orvanetest", "rate=HZ"},
        {"driver=orvanetest,rate=1e6,freq=-1", "freq=-1 cannot be used"},
        {"driver=orvanetest,rate=1e6,channel=2", "no channel 2"},
        {"driver=orvanetest,rate=1e9", "too fast"},
    };
    for (const auto& [entries, text] : rows) {
        const auto recording = openLive(QStringLiteral("soapy://") + entries, "", 0.0);
        ASSERT_FALSE(recording) << entries;
        EXPECT_THAT(recording.error().sentence.toStdString(), testing::HasSubstr(text)) << entries;
    }
    EXPECT_EQ(openCount, 0);
}

} // namespace
