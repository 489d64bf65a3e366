// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/sources/RecordingSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <complex>
#include <limits>

namespace {

std::vector<double> readAll(SignalSource& source, std::size_t blockLength)
{
    std::vector<double> all;
    std::vector<double> block;
    while (source.read(block, blockLength) > 0)
        all.insert(all.end(), block.begin(), block.end());
    return all;
}

struct Recordings : testing::Test, TestFolder
{
    std::unique_ptr<RecordingSource> open(const QString& name)
    {
        return RecordingSource::open(name, why);
    }
    QString why;
};

TEST_F(Recordings, ComeThroughInEveryFormatWithAnyNumberOfChannels)
{
    const std::tuple<const char*, int, double> rows[] = {
        {"u8.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1.0 / 128},
        {"24.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 1.0 / 8388608},
        {"float.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1e-7},
        {"double.w64", SF_FORMAT_W64 | SF_FORMAT_DOUBLE, 0.0},
        {"16.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1.0 / 32768},
    };
    for (const auto& [name, format, tolerance] : rows) {
        for (const int channels : {1, 2, 7}) {
            SCOPED_TRACE(testing::Message() << name << ", " << channels << " channels");
            const auto written = sine(std::size_t(channels) * 1000);
            writeRecording(path(name), 12345, channels, written, format);
            const auto source = open(path(name));
            ASSERT_TRUE(source) << qPrintable(why);
            EXPECT_EQ(source->name(), name);
            EXPECT_EQ(source->sampleRate(), 12345.0);
            EXPECT_EQ(source->isComplex(), channels == 2);
            EXPECT_EQ(source->valueCount(), channels);
            EXPECT_EQ(source->sampleCount(), 1000);
            EXPECT_THAT(readAll(*source, 77),
                        testing::Pointwise(testing::DoubleNear(tolerance), written));
            EXPECT_EQ(source->position(), 1000);
            ASSERT_TRUE(source->seek(990));
            EXPECT_FALSE(source->seek(1001) || source->seek(-1));
            EXPECT_EQ(readAll(*source, 77).size(), std::size_t(channels) * 10);
        }
    }
}

TEST_F(Recordings, ThatCannotBeReadSayWhyAndThoseCutOffGiveWhatIsThere)
{
    writeFile(path("empty.wav"), {});
    writeFile(path("text.wav"), "These are no samples.\n");
    writeRecording(path("none.wav"), 8000, 1, {});
    writeRecording(path("whole.wav"), 8000, 2, sine(2000));
    QFile whole(path("whole.wav"));
    whole.open(QIODevice::ReadOnly);
    QByteArray content = whole.readAll();
    writeFile(path("header.wav"), content.left(30));
    writeFile(path("cut.wav"), content.left(44 + 4 * 600 + 1));
    content.replace(24, 4, QByteArray(4, '\0')); // the sample rate
    writeFile(path("rate.wav"), content);

    const std::pair<QString, const char*> rows[] = {
        {path("missing.wav"), "no such file"}, {folder.path(), "folder"},
        {"/dev/null", "not a regular file"},   {path("empty.wav"), "empty"},
        {path("text.wav"), "not a recording"}, {path("header.wav"), "not a recording"},
        {path("rate.wav"), "not a recording"}, {path("none.wav"), "no samples"}};
    for (const auto& [name, reason] : rows) {
        EXPECT_FALSE(open(name)) << qPrintable(name);
        EXPECT_THAT(why.toStdString(), testing::HasSubstr(reason)) << qPrintable(name);
    }
    const auto source = open(path("cut.wav"));
    ASSERT_TRUE(source) << qPrintable(why);
    EXPECT_EQ(source->sampleCount(), 600);
    EXPECT_EQ(readAll(*source, 1000).size(), 1200U);
}

TEST_F(Recordings, MayHoldNanAndInfinity)
{
    const double infinity = std::numeric_limits<double>::infinity();
    writeRecording(path("odd.wav"), 8000, 1, {0.5, std::nan(""), infinity, -infinity, 0.25},
                   SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    const auto samples = readAll(*open(path("odd.wav")), 2);
    EXPECT_THAT(samples, testing::ElementsAre(0.5, testing::IsNan(), infinity, -infinity, 0.25));
}

TEST(Nrz, KeepsItsFramesWhereverItIsReadFrom)
{
    NrzSettings settings;
    settings.noise = 0.0;
    NrzSource source(settings);
    ASSERT_EQ(source.frameLength(), 1600.0);
    const auto bitsOf = [&source](std::int64_t frame) {
        std::vector<double> samples;
        EXPECT_TRUE(source.seek(frame * 1600));
        source.read(samples, 1600);
        std::string bits;
        for (std::size_t i = 39; i < samples.size(); i += 40) // ends of symbols
            bits += samples[i] > 0.0 ? '1' : '0';
        return bits;
    };
    const std::string fifth = bitsOf(5);
    const std::string sixth = bitsOf(6);
    EXPECT_EQ(sixth.substr(0, 16), "1110101110010000");
    EXPECT_NE(sixth, fifth);
    EXPECT_EQ(bitsOf(5), fifth);
    EXPECT_FALSE(source.seek(-1));
}

TEST(Nrz, HasTheBandwidthAndTheNoiseThatItWasAskedFor)
{
    for (const double bandwidth : {0.4, 0.8, 1.5}) {
        NrzSettings settings;
        settings.bandwidth = bandwidth;
        settings.noise = 0.0;
        std::vector<double> clean;
        NrzSource(settings).read(clean, 200000);
        // The first three symbols are a step from rest: its differences are the impulse response.
        std::complex<double> response = clean[0];
        for (std::size_t i = 1; i < 120; ++i)
            response += std::polar(clean[i] - clean[i - 1],
                                   -6.283185307179586 * bandwidth * static_cast<double>(i) / 40.0);
        EXPECT_NEAR(std::abs(response), std::sqrt(0.5), 0.02) << bandwidth;

        settings.noise = 0.2;
        std::vector<double> noisy;
        NrzSource(settings).read(noisy, clean.size());
        double power = 0.0;
        for (std::size_t i = 0; i < clean.size(); ++i)
            power += std::pow(noisy[i] - clean[i], 2.0);
        EXPECT_NEAR(std::sqrt(power / 200000.0), 0.2, 0.01) << bandwidth;
    }
}

} // namespace
