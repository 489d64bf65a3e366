// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"

#include <SoapySDR/Device.hpp>
#include <SoapySDR/Errors.hpp>
#include <SoapySDR/Registry.hpp>
#include <SoapySDR/Version.hpp>
#include <gmock/gmock.h>

#include <complex>

namespace {

/// A radio whose samples count up, and what it was told.
struct TestRadio : SoapySDR::Device
{
    TestRadio() { ++liveCount; }
    ~TestRadio() override { --liveCount; }

    std::size_t getNumChannels(int) const override { return 2; }
    void setSampleRate(int, std::size_t, double rate) override
    {
        if (rate > 1e7)
            throw std::runtime_error("too fast");
        told << "rate " << rate << "; ";
        sampleRate = rate;
    }
    double getSampleRate(int, std::size_t) const override { return sampleRate; }
    void setFrequency(int, std::size_t channel, double hertz, const SoapySDR::Kwargs&) override
    {
        told << "freq " << hertz << " of " << channel << "; ";
    }
    bool hasGainMode(int, std::size_t) const override { return true; }
    void setGainMode(int, std::size_t, bool automatic) override
    {
        told << "automatic " << automatic << "; ";
    }
    void setGain(int, std::size_t, double decibels) override
    {
        told << "gain " << decibels << "; ";
    }
    void setAntenna(int, std::size_t, const std::string& name) override { told << name << "; "; }

    SoapySDR::Stream* setupStream(int, const std::string& format, const std::vector<std::size_t>&,
                                  const SoapySDR::Kwargs&) override
    {
        told << format;
        ++liveCount;
        return reinterpret_cast<SoapySDR::Stream*>(this);
    }
    void closeStream(SoapySDR::Stream*) override { --liveCount; }
    int readStream(SoapySDR::Stream*, void* const* buffers, std::size_t count, int&, long long&,
                   long) override
    {
        const int result = next < results.size() ? results[next++] : SOAPY_SDR_TIMEOUT;
        if (result == throws)
            throw std::runtime_error("unplugged");
        auto* samples = static_cast<std::complex<float>*>(buffers[0]);
        for (int i = 0; i < std::min(result, static_cast<int>(count)); ++i)
            samples[i] = {sent++, -1.0F};
        return result;
    }

    static constexpr int throws = -1000;
    static inline int liveCount = 0; // of devices and streams
    static inline std::ostringstream told;
    static inline std::vector<int> results; // of one read after the other
    std::size_t next = 0;
    float sent = 0.0F;
    double sampleRate = 0.0;
};

class Soapy : public testing::Test
{
protected:
    /// Only our radio is there, whatever modules are installed.
    static void SetUpTestSuite() { qputenv("SOAPY_SDR_ROOT", "/nonexistent"); }
    void SetUp() override
    {
        TestRadio::told.str("");
        TestRadio::results.clear();
    }
    void TearDown() override { EXPECT_EQ(TestRadio::liveCount, 0); }
    static Recording open(const char* address, std::optional<double> sampleRate = std::nullopt)
    {
        return openLive(address, "", sampleRate);
    }
};

const SoapySDR::Registry registry(
    "orvanetest",
    [](const SoapySDR::Kwargs& wanted) {
        const auto driver = wanted.find("driver");
        const bool isMeant = driver == wanted.end() || driver->second == "orvanetest";
        return isMeant ? SoapySDR::KwargsList{{{"label", "Test tone"}}} : SoapySDR::KwargsList();
    },
    [](const SoapySDR::Kwargs&) -> SoapySDR::Device* { return new TestRadio; },
    SOAPY_SDR_ABI_VERSION);

TEST_F(Soapy, IsSetUpAsTheAddressSays)
{
    const Recording recording =
        open("soapy://driver=orvanetest, freq=433.92e6,rate=2e6,gain=12.5,antenna=RX2,channel=1");
    ASSERT_TRUE(recording.source) << qPrintable(recording.why);
    EXPECT_EQ(TestRadio::told.str(), "RX2; rate 2e+06; freq 4.3392e+08 of 1; automatic 0; "
                                     "gain 12.5; CF32");
    EXPECT_EQ(recording.source->sampleRate(), 2e6);
    EXPECT_TRUE(recording.source->isLive() && recording.source->isComplex());
    TestRadio::told.str("");
    EXPECT_TRUE(open("soapy://driver=orvanetest", 1e6).source);
    EXPECT_EQ(TestRadio::told.str(), "rate 1e+06; automatic 1; CF32");
}

TEST_F(Soapy, CountsWhatIsLostAndEndsWithTheDevice)
{
    for (const int failure : {SOAPY_SDR_STREAM_ERROR, TestRadio::throws}) {
        TestRadio::results = {
            3, SOAPY_SDR_OVERFLOW, SOAPY_SDR_TIMEOUT, 0, SOAPY_SDR_CORRUPTION, 2, failure};
        const Recording recording = open("soapy://driver=orvanetest,rate=1e6");
        ASSERT_TRUE(recording.source) << qPrintable(recording.why);
        std::vector<double> all;
        readUntil(*recording.source, all, [&] { return recording.source->hasEnded(); });
        EXPECT_THAT(all, testing::ElementsAre(0, -1, 1, -1, 2, -1, 3, -1, 4, -1));
        EXPECT_EQ(recording.source->lostBlockCount(), 2);
        EXPECT_TRUE(says(*recording.source, "has failed"));
        EXPECT_EQ(TestRadio::liveCount, 0);
    }
}

TEST_F(Soapy, ThatCannotBeOpenedSaysWhatThereIs)
{
    const std::pair<const char*, const char*> rows[] = {
        {"soapy://", "driver=orvanetest,label=Test tone"},
        {"soapy://rate=1e6", "driver=orvanetest,label=Test tone"},
        {"soapy://driver=nosuch,rate=1e6", "driver=orvanetest,label=Test tone"},
        {"soapy://driver=orvanetest", "rate=HZ"},
        {"soapy://driver=orvanetest,rate=fast", "rate=fast cannot be used"},
        {"soapy://driver=orvanetest,rate=nan", "rate=nan cannot be used"},
        {"soapy://driver=orvanetest,rate=1e6,freq=-1", "freq=-1 cannot be used"},
        {"soapy://driver=orvanetest,rate=1e6,channel=2", "no channel 2"},
        {"soapy://driver=orvanetest,rate=1e9", "too fast"},
        {"soapy://driver=null,rate=1e6", "no channel 0"},
    };
    for (const auto& [address, text] : rows) {
        SCOPED_TRACE(address);
        const Recording recording = open(address);
        EXPECT_FALSE(recording.source);
        EXPECT_THAT(recording.why.toStdString(), testing::HasSubstr(text));
    }
}

} // namespace
