// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Files that change while they are read, and texts that are no words.
#include "Recordings.h"
#include "workbench/sources/PlainText.h"
#include "workbench/sources/RawGuess.h"

#include <QtEndian>

#include <gmock/gmock.h>

namespace {

TEST(PlainText, HoldsNothingThatControlsWhatShowsIt)
{
    const std::pair<QString, QString> rows[] = {
        {"a <b>\u00e4\u4e2d\U0001f600", "a <b>\u00e4\u4e2d\U0001f600"},
        {"\x1b[2Jx\x07\t\r\n\u2028y", QString("\ufffd[2Jx\ufffd    y")},
        {QString(QChar(0x9b)) + "31m" + QChar(0x202e) + "gpj.exe" + QChar(0x2066) + QChar(0x200f),
         "\ufffd31m\ufffdgpj.exe\ufffd\ufffd"},
        {QString::fromUtf8("a\0b", 3), "a\ufffdb"},
        {QString(QChar(0xd83d)) + "a", "\ufffda"}, // half a character
        {"\u0646\u200c\u0645", "\u0646\u200c\u0645"},
        {QString(600, 'x'), QString(499, 'x') + "\u2026"}};
    for (const auto& [text, shown] : rows)
        EXPECT_EQ(plainText(text), shown);
}

// The size of an entry leads back to the start of its list.
TEST_F(Recordings, WithAListThatHasNoEndAreRead)
{
    writeRecording(path("a.wav"), 8000, 1, sine(400));
    QFile file(path("a.wav"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes = file.readAll();
    const auto start = bytes.indexOf("data") + 8;
    bytes.replace(start, 8, "LISTINFO"); // samples, too, may read so
    bytes.insert(start - 8, QByteArray("LIST\x0c\0\0\0INFOICMS\xf4\xff\xff\xff", 20));
    writeFile(path("a.wav"), bytes);
    const auto source = open(path("a.wav"));
    ASSERT_TRUE(source) << qPrintable(why);
    const std::vector<double> samples = readAll(*source, 77);
    ASSERT_EQ(samples.size(), 400U);
    for (std::size_t k = 0; k < 4; ++k) {
        const auto level = qFromLittleEndian<qint16>(&"LISTINFO"[2 * k]);
        EXPECT_EQ(samples[k], level / 32768.0);
    }
}

TEST_F(Recordings, WithoutAHeaderAreGuessedByNameAndDoubtedByTheirBytes)
{
    const std::tuple<const char*, const char*, double> names[] = {
        {"g001_433.92M_250k.cu8", "cu8", 250e3},
        {"ads_1090MHz_2Msps.cu8", "cu8", 2e6},
        {"fsk_19k2_433M_1Msps_cf32.bin", "cf32_le", 1e6},
        {"x_20150211_143803_433920000_2400000_fc.raw", "cf32_le", 2.4e6},
        {"x_20150211_143803.cs16", "ci16_le", 0.0},
        {"burst-433.92M.c16", "ci16_le", 0.0},
        {"x_fs=2.5e6_f868M.s8", "ri8", 2.5e6},
        {"sensor_48kHz_2ch.s16", "ri16_le", 48e3},
        {"take 2 of 3.f32", "rf32_le", 0.0},
        {"notes.bin", "", 0.0}};
    for (const auto& [name, format, rate] : names) {
        const RawGuess guess = RawGuess::ofName(name);
        EXPECT_EQ(guess.format ? guess.format->name() : "", format) << name;
        EXPECT_EQ(guess.sampleRate.value_or(0.0), rate) << name;
        EXPECT_EQ(guess.channelCount, QString(name).contains("2ch") ? 2 : 1) << name;
        EXPECT_TRUE(RawGuess::isRaw(name)) << name;
    }
    const auto doubt = [this](const char* name, const char* format) {
        const auto message = RawGuess::doubt(path(name), *SampleFormat::parse(format));
        return message.value_or(Message()).sentence;
    };
    const std::pair<const char*, int> formats[] = {
        {"u8", SF_FORMAT_PCM_U8},  {"s8", SF_FORMAT_PCM_S8},
        {"s16", SF_FORMAT_PCM_16}, {"s16_be", SF_FORMAT_PCM_16 | SF_ENDIAN_BIG},
        {"s32", SF_FORMAT_PCM_32}, {"s32_be", SF_FORMAT_PCM_32 | SF_ENDIAN_BIG},
        {"f32", SF_FORMAT_FLOAT},  {"f64", SF_FORMAT_DOUBLE}};
    for (const double level : {0.04, 0.5, 1.99}) {       // of a sine of 0.5
        std::vector<double> samples = sine(20000, 40.3); // bytes that hardly repeat
        for (double& sample : samples)
            sample *= level;
        writeRecording(path("x.raw"), 8000, 2, samples, SF_FORMAT_RAW | SF_FORMAT_PCM_24);
        EXPECT_TRUE(doubt("x.raw", "s32").contains("24"));
        for (const auto& [right, code] : formats) {
            writeRecording(path("x.raw"), 8000, 2, samples, SF_FORMAT_RAW | code);
            for (const auto& [told, other] : formats) {
                const QString said = doubt("x.raw", told);
                const QString name = SampleFormat::parse(right)->name();
                EXPECT_EQ(said.contains("look like " + name), code != other)
                    << level << ' ' << right << " as " << told << ": " << qPrintable(said);
            }
        }
    }
    writeFile(path("short.cu8"), "too little to tell");
    EXPECT_EQ(doubt("short.cu8", "cf32"), "");
}

TEST_F(Recordings, WhoseSizesWereLeftOpenPlayToTheirEnd)
{
    const auto number = [](quint32 size) { // as it stands in the file
        size = qToLittleEndian(size);
        return QByteArray(reinterpret_cast<const char*>(&size), sizeof size);
    };
    const QByteArray format =
        "fmt " + number(16) + QByteArray::fromHex("01000100 401f0000 803e0000 02001000");
    const QByteArray info = "LIST" + number(4) + "INFO";
    constexpr quint32 open = 0xffffffff;
    // Sizes of the whole and of the samples, chunks before and after them, samples that play.
    const std::tuple<quint32, quint32, QByteArray, QByteArray, int> rows[] = {
        {0, 0, "", "", 500},       {open, open, "", "", 500},   {open, 0, info, "", 500},
        {36, 0, "", "", 500},      {0, open, info, "", 500},    {8, 0, info, "", 500},
        {1036, 0, "", "", 500}, // a program that was ended
        {1036, 1000, "", "", 500}, {1048, 1000, "", info, 500}, {48, 0, "", info, 0}};
    for (const auto& [whole, size, before, after, count] : rows) {
        SCOPED_TRACE(testing::Message() << whole << ", " << size);
        writeFile(path("a.wav"), "RIFF" + number(whole) + "WAVE" + format + before + "data" +
                                     number(size) + QByteArray(2 * count, '\x40') + after);
        const auto source = this->open(path("a.wav"));
        ASSERT_EQ(source != nullptr, count > 0);
        EXPECT_EQ(notices, QStringList());
        for (int run = 0; run < 2 && source; ++run) {
            EXPECT_EQ(source->sampleCount(), count);
            EXPECT_THAT(readAll(*source, 77),
                        testing::AllOf(testing::SizeIs(count), testing::Each(16448.0 / 32768.0)));
            EXPECT_TRUE(source->seek(0));
        }
    }
}

// Each writes a recording of some channels, as long as told in samples.
void writeAudio(const QString& name, int channels, std::size_t length)
{
    writeRecording(name, 8000, channels, sine(length * static_cast<std::size_t>(channels)),
                   SF_FORMAT_PCM_16 | (name.endsWith("flac") ? SF_FORMAT_FLAC : SF_FORMAT_WAV));
}

void writeText(const QString& name, int channels, std::size_t length)
{
    QByteArray text;
    for (std::size_t i = 0; i < length; ++i)
        text += QByteArray("1").repeated(channels > 2 ? 500 : 1) + ",2\n";
    writeFile(name, text);
}

void writeRaw(const QString& name, int channels, std::size_t length)
{
    writeFile(name, QByteArray(static_cast<int>(length) * channels, '\1'));
}

const QByteArray plainMetadata = R"({"global": {"core:datatype": "cu8", "core:version": "1.0.0",)"
                                 R"("core:sample_rate": 8000}, "captures": [], "annotations": []})";

void writeSigmf(const QString& name, int channels, std::size_t length)
{
    writeFile(QString(name).replace("-data", "-meta"), plainMetadata);
    writeRaw(name, channels, length);
}

void writeTar(const QString& name, int channels, std::size_t length)
{
    const QByteArray samples(static_cast<int>(length) * channels, '\1');
    writeArchive(name, {{"a.sigmf-meta", plainMetadata}, {"a.sigmf-data", samples}});
}

TEST_F(Recordings, ThatChangeWhileTheyAreReadEndThereAndSaySo)
{
    constexpr std::size_t count = 20000; // samples
    // A file, and whether another one in its place is told: never, of another format, or always.
    enum Told { Never, Format, Always };
    const std::tuple<const char*, void (*)(const QString&, int, std::size_t), Told> files[] = {
        {"a.flac", writeAudio, Always},      {"a.wav", writeAudio, Always},
        {"a.csv", writeText, Format},        {"a.cu8", writeRaw, Never},
        {"a.sigmf-data", writeSigmf, Never}, {"a.sigmf", writeTar, Never}};
    enum class Change { Shorter, OtherChannels, OtherFormat, Gone };
    for (const auto& [name, write, told] : files) {
        for (const Change change :
             {Change::Shorter, Change::OtherChannels, Change::OtherFormat, Change::Gone}) {
            SCOPED_TRACE(testing::Message() << name << ", change " << static_cast<int>(change));
            QFile::remove(path(name));
            write(path(name), 2, count);
            const auto source = open(path(name));
            ASSERT_TRUE(source) << qPrintable(why);
            std::vector<double> block;
            source->read(block, 1000);
            if (change == Change::Gone)
                QFile::remove(path(name));
            else if (change == Change::Shorter)
                QFile(path(name)).resize(QFile(path(name)).size() / 2);
            else if (change == Change::OtherFormat)
                writeRaw(path(name), 8, count);
            else
                write(path(name), 8, count);
            // As when it is repeated.
            std::size_t all = 0;
            for (int run = 0; run < 3; ++run) {
                all = readAll(*source, 1000).size();
                source->seek(0);
            }
            EXPECT_LE(all, 2 * count);
            EXPECT_EQ(source->sampleCount(), static_cast<std::int64_t>(count));
            EXPECT_EQ(source->facts().valueCount(), 2);
            const bool isTold = change == Change::Shorter ||
                                (change == Change::OtherFormat && told != Never) ||
                                (change == Change::OtherChannels && told == Always);
            const QString trouble = source->trouble().value_or(Message()).sentence;
            EXPECT_EQ(trouble.contains("open it again"), isTold) << qPrintable(trouble);
            EXPECT_EQ(all < 2 * count, isTold);
        }
    }
}

} // namespace
