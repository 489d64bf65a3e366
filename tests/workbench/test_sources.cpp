// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "density/ErrorVectors.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <gmock/gmock.h>

namespace {

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
            EXPECT_EQ(source->facts().name, name);
            EXPECT_EQ(source->facts().sampleRate, 12345.0);
            EXPECT_EQ(source->facts().isComplex, channels == 2);
            EXPECT_EQ(source->facts().valueCount(), channels);
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

TEST_F(Recordings, ThatCannotBeReadSayWhy)
{
    const auto header = [&](int offset, const QByteArray& bytes, int length = 8044) {
        writeRecording(path("a.wav"), 8000, 2, sine(4000));
        QFile file(path("a.wav"));
        file.open(QIODevice::ReadOnly);
        return file.readAll().replace(offset, bytes.size(), bytes).left(length);
    };
    const std::tuple<const char*, QByteArray, const char*> rows[] = {
        {"empty.wav", "", "empty"},
        {"text.wav", "These are no samples.\n", "not a recording"},
        {"header.wav", header(0, "", 30), "not a recording"},
        {"channels.wav", header(22, QByteArray(2, '\0')), "not a recording"},
        {"rate.wav", header(24, QByteArray(4, '\0')), "the sample rate is 0 Hz"},
        {"none.wav", header(0, "", 44), "no samples"},
        {"7.cf32", "7 bytes", "no whole sample"},
        {"nan.cf32", QByteArray(800, '\xff'), "no numbers"},
        {"a.csv", "version https://git-lfs.github.com/spec/v1\n", "pointer of a large-file store"},
        {"a.cf32", "/annex/objects/SHA256E-s8--0.cf32\n", "pointer of a large-file store"},
        {"a.sigmf-collection", "{}", "open one of them"}};
    for (const auto& [name, content, reason] : rows) {
        writeFile(path(name), content);
        EXPECT_FALSE(open(path(name))) << name;
        EXPECT_THAT(why.toStdString(), testing::HasSubstr(reason)) << name;
    }
    QFile::setPermissions(path("7.cf32"), {});
    QFile::link(".git/annex/objects/0", path("annex.wav"));
    const std::pair<QString, const char*> others[] = {
        {path("annex.wav"), "pointer of a large-file store"},
        {path("missing.wav"), "no such file"},
        {folder.path(), "folder"},
        {"/dev/null", "not a regular file"},
        {path("7.cf32"), QFileInfo(path("7.cf32")).isReadable() ? "whole" : "no permission"}};
    for (const auto& [name, reason] : others) {
        EXPECT_FALSE(open(name)) << qPrintable(name);
        EXPECT_THAT(why.toStdString(), testing::HasSubstr(reason)) << qPrintable(name);
    }
}

TEST_F(Recordings, ThatWereCutOffGiveWhatIsThereAndSaySo)
{
    const std::tuple<const char*, int, const char*> rows[] = {
        {"a.wav", SF_FORMAT_WAV, "160000 bytes, 4001 are there"},
        {"a.aiff", SF_FORMAT_AIFF, "160008 bytes, "},
        {"a.au", SF_FORMAT_AU, "160000 bytes, "},
        {"a.w64", SF_FORMAT_W64, "160104 bytes, "},
        {"a.rf64", SF_FORMAT_RF64, "160096 bytes, "},
        {"a.flac", SF_FORMAT_FLAC, "its end cannot be read"}};
    for (const auto& [name, format, says] : rows) {
        SCOPED_TRACE(name);
        const auto written = sine(80000, 7.7);
        writeRecording(path(name), 8000, 2, written, format | SF_FORMAT_PCM_16);
        ASSERT_TRUE(open(path(name))) << qPrintable(why);
        EXPECT_EQ(notices, QStringList());
        QFile file(path(name));
        file.resize(name[2] == 'w' && name[3] == 'a' ? 44 + 4001 : file.size() / 2);
        const auto source = open(path(name));
        ASSERT_TRUE(source) << qPrintable(why);
        EXPECT_THAT(notices.join('\n').toStdString(), testing::HasSubstr(says));
        EXPECT_FALSE(source->seek(39999)); // and nothing moves
        for (int run = 0; run < 2; ++run) {
            const auto samples = readAll(*source, 1000);
            EXPECT_GT(samples.size(), 1990U);
            EXPECT_LT(samples.size(), 41000U);
            EXPECT_NEAR(samples[999], written[999], 1e-4);
            EXPECT_TRUE(source->seek(0));
        }
    }
}

TEST_F(Recordings, MayHoldNanAndInfinity)
{
    writeRecording(path("odd.wav"), 8000, 1, {0.5, std::nan(""), HUGE_VAL, -HUGE_VAL, 0.25},
                   SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    const auto samples = readAll(*open(path("odd.wav")), 2);
    EXPECT_THAT(samples, testing::ElementsAre(0.5, testing::IsNan(), HUGE_VAL, -HUGE_VAL, 0.25));
    EXPECT_THAT(notices.join('\n').toStdString(), testing::StartsWith("3 of its first 5 numbers"));
}

TEST(SampleFormats, ConvertTheBytesOfEveryDataType)
{
    // Numbers are hexadecimal, most significant byte first.
    const std::tuple<const char*, const char*, std::vector<double>> rows[] = {
        {"f32", "3fc00000 c1200000 7f800000", {1.5, -10.0, HUGE_VAL}},
        {"f64", "3ff8000000000000 c024000000000000", {1.5, -10.0}},
        {"i8", "7f 80 ff", {127.0 / 128, -1.0, -1.0 / 128}},
        {"i16", "7fff 8000 0001", {32767.0 / 32768, -1.0, 1.0 / 32768}},
        {"i32", "40000000 80000000", {0.5, -1.0}},
        {"i64", "4000000000000000 8000000000000000", {0.5, -1.0}},
        {"u8", "00 ff 7f 80", {-1.0, 1.0, -0.5 / 127.5, 0.5 / 127.5}},
        {"u16", "0000 ffff 8000", {-1.0, 1.0, 0.5 / 32767.5}},
        {"u32", "00000000 ffffffff", {-1.0, 1.0}},
        {"u64", "0000000000000000 ffffffffffffffff", {-1.0, 1.0}}};
    for (const auto& [type, numbers, expected] : rows) {
        for (const char* variant : {"r%1_le", "c%1_le", "r%1_be", "c%1_be", "r%1", "c%1"}) {
            const QString name = QString(variant).arg(type);
            SCOPED_TRACE(qPrintable(name));
            QByteArray bytes;
            for (QByteArray number : QByteArray(numbers).split(' ')) {
                number = QByteArray::fromHex(number);
                if (!name.endsWith("_be"))
                    std::reverse(number.begin(), number.end());
                bytes += number;
            }
            const auto format = SampleFormat::parse(name);
            ASSERT_TRUE(format);
            EXPECT_TRUE(name.startsWith(format->isComplex ? 'c' : 'r'));
            std::vector<double> values(expected.size());
            ASSERT_EQ(format->byteCount() * values.size(), static_cast<std::size_t>(bytes.size()));
            format->convert(bytes.data(), values.size(), values.data());
            EXPECT_THAT(values, testing::Pointwise(testing::DoubleEq(), expected));
        }
    }
    for (const char* name : {"", "c", "cf16", "rf8", "xf32", "cf32_me", "cf32_le ", "Cf32", "cu12"})
        EXPECT_FALSE(SampleFormat::parse(name)) << name;
}

TEST_F(Recordings, MayBeRawSamples)
{
    // Name, format given, what it is, samples and notices.
    const std::tuple<const char*, const char*, const char*, std::int64_t, int> rows[] = {
        {"a.cu8", nullptr, "cu8", 12, 1},      {"a.CS8", nullptr, "ci8", 12, 1},
        {"a.cs16", nullptr, "ci16_le", 6, 1},  {"a.cf32", nullptr, "cf32_le", 3, 1},
        {"a.fc32", nullptr, "cf32_le", 3, 1},  {"a.iq", nullptr, "cf32_le", 3, 1},
        {"a.C16", nullptr, "ci16_le", 6, 1},   {"a.s16", nullptr, "ri16_le", 12, 1},
        {"a.cu8", "rf64_be", "rf64_be", 3, 1}, {"a.bin", "cs32", "ci32_le", 3, 1},
        {"25.f32", nullptr, "rf32_le", 6, 2}, // a byte too many
        {"25.bin", "cf64", "cf64_le", 1, 2}};
    for (const auto& [name, format, is, sampleCount, noticeCount] : rows) {
        SCOPED_TRACE(name);
        writeFile(path(name), QByteArray(name[0] == '2' ? 25 : 24, '\x40'));
        Recording::Options options;
        if (format)
            options.format = SampleFormat::parse(format);
        auto source = open(path(name), options);
        ASSERT_TRUE(source) << qPrintable(why);
        EXPECT_TRUE(details.contains(QString("Format: ") + is)) << qPrintable(details.join(' '));
        EXPECT_EQ(source->sampleCount(), sampleCount);
        EXPECT_EQ(source->facts().isComplex, is[0] == 'c');
        EXPECT_EQ(source->facts().sampleRate, 48000.0);
        EXPECT_EQ(notices.size(), noticeCount);
        EXPECT_EQ(readAll(*source, 5).size(),
                  static_cast<std::size_t>(sampleCount * source->facts().valueCount()));
        options.sampleRate = 2e6;
        source = open(path(name), options);
        EXPECT_EQ(source->facts().sampleRate, 2e6);
        EXPECT_EQ(notices.size(), noticeCount - 1);
    }
}

const QByteArray sigmfMetadata =
    R"({"global": {"core:datatype": "ri16_le", "core:version": "1.2.5", "core:num_channels": 2,
                   "core:sample_rate": 8000},
        "captures": [{"core:sample_start": 0, "core:frequency": 1e9}],
        "annotations": [{"core:sample_start": 3, "core:sample_count": 4, "core:label": "burst"}]})";

const QByteArray sigmfSamples(40, '\x40');
const QByteArray rightChecksum =
    R"(1", "core:sha512": ")" +
    QCryptographicHash::hash(sigmfSamples, QCryptographicHash::Sha512).toHex();

// What is replaced in the metadata, by what, whether they are shown then, and what is said.
const std::tuple<const char*, const char*, bool, const char*> oddMetadata[] = {
    {"8000", "8e3", true, ""},
    {"{\"glob", "{glob", false, "not JSON"},
    {"global", "globe", false, "lack the object \"global\""},
    {"core:datatype", "core:type", false, "lack core:datatype"},
    {"ri16_le", "xi16_le", false, "\"xi16_le\", which is unknown"},
    {"8000", "0", false, "core:sample_rate is 0"},
    {"8000", "1e300", false, "core:sample_rate is 1e+300"},
    {"8000", "\"8 kHz\"", false, "core:sample_rate is 8 kHz"},
    {"core:sample_rate", "core:rate", true, "not known, 48000 Hz is assumed"},
    {"channels\": 2", "channels\": 1.5", false, "core:num_channels is 1.5"},
    {"1.2.5", R"(1", "core:dataset": "../a)", false, "core:dataset is \"../a\""},
    {"1.2.5", R"(1", "core:dataset": "b\u0000.bin)", false, "core:dataset is \"b\ufffd.bin\""},
    {"2,", R"(2, "core:dataset": "b.bin", "core:metadata_only": true,)", false, "only"},
    {"core:version", "core:v", true, "lack core:version"},
    {"1.2.5", R"(1", "core:sha512": "00ff)", true, "core:sha512 differs"},
    {"1.2.5", rightChecksum.constData(), true, ""},
    {"1e9}", R"(1, "core:global_index": 9}, {"core:sample_start": 4, "core:global_index": 20})",
     true, "(7, the first before sample 4; places: 1)"},
    {"1e9}", R"(1, "core:datetime": "2026-11-25T23:59:59.9999Z"},
         {"core:sample_start": 4, "core:datetime": "2026-11-26T00:00:01.0004Z"})",
     true, "(about 8000, the first before sample 4"},
    {"1e9}", R"(1, "core:datetime": "2026-11-25T23:59:59Z"},
         {"core:sample_start": 4, "core:datetime": "2026-11-26T00:00:00Z"})", // are rounded
     true, ""},
    {"\"annotations", "\"notes", true, "lack the list \"annotations\""},
    {"count\": 4", "count\": 8", true, "speak of 11 samples, 10 are there"},
    {"2,", R"(2, "core:extensions": [{"name": "z", "optional": false}],)", true, "\"z\""}};

TEST_F(Recordings, OfSigmfAreAsTheirMetadataSay)
{
    writeFile(path("a.sigmf-data"), sigmfSamples);
    for (const auto& [from, to, isShown, says] : oddMetadata) {
        SCOPED_TRACE(to);
        writeFile(path("a.sigmf-meta"), QByteArray(sigmfMetadata).replace(from, to));
        const auto source = open(path("a.sigmf-meta"));
        EXPECT_EQ(source != nullptr, isShown);
        EXPECT_THAT((why + notices.join(' ')).toStdString(), testing::HasSubstr(says));
        EXPECT_LE(notices.size(), *says ? 1 : 0);
    }
    writeFile(path("a.sigmf-meta"), sigmfMetadata);
    const auto source = open(path("a.sigmf-data"));
    EXPECT_EQ(source->facts().channelCount, 2);
    EXPECT_EQ(source->sampleCount(), 10);
    EXPECT_EQ(source->facts().sampleRate, 8000.0);
    for (const auto& [rate, known] : {std::pair("1200", 1200.0), {"0", -1.0}, {"8001", -1.0}}) {
        const QByteArray own = QByteArray("1.2.5\", \"own:symbol_rate\": ") + rate + ", \"a\": \"";
        writeFile(path("a.sigmf-meta"), QByteArray(sigmfMetadata).replace("1.2.5", own));
        EXPECT_EQ(open(path("a.sigmf-data"))->facts().symbolRate.value_or(-1.0), known);
    }
    EXPECT_THAT(details.join('\n').toStdString(),
                testing::AllOf(testing::HasSubstr("core:frequency 1000000000"),
                               testing::HasSubstr("core:label burst")));
    Recording::Options options;
    options.sampleRate = 5.0;
    writeFile(path("a.sigmf-meta"), QByteArray(sigmfMetadata).replace("8000", "0"));
    EXPECT_EQ(open(path("a.sigmf-meta"), options)->facts().sampleRate, 5.0);
    const QByteArray many = "captures\": [" + QByteArray("{},").repeated(150000);
    writeFile(path("a.sigmf-meta"), QByteArray(sigmfMetadata).replace("captures\": [", many));
    EXPECT_TRUE(open(path("a.sigmf-meta")));
    EXPECT_EQ(details.filter("Further captures and annotations: 50").size(), 1);
    QFile::remove(path("a.sigmf-meta"));
    EXPECT_FALSE(open(path("a.sigmf-data")));
    EXPECT_TRUE(why.contains("a.sigmf-meta: there is no such file")) << qPrintable(why);
}

TEST_F(Recordings, OfSigmfMayHaveForeignBytesAmongTheirSamples)
{
    writeFile(path("a.sigmf-meta"), R"({"global": {"core:datatype": "ru8", "core:version": "1.2.0",
        "core:dataset": "a.dat", "core:trailing_bytes": 1, "core:offset": 100}, "annotations": [],
        "captures": [{"core:sample_start": 100, "core:header_bytes": 2}, {"core:sample_start": 101},
                     {"core:sample_start": 103, "core:header_bytes": 1},
                     {"core:sample_start": 900, "core:header_bytes": 5}]})");
    writeFile(path("a.dat"), QByteArray::fromHex("aaaa ff00ff aa 00ff aa"));
    auto source = open(path("a.sigmf-meta"));
    EXPECT_THAT(readAll(*source, 2), testing::ElementsAre(1.0, -1.0, 1.0, -1.0, 1.0));
    ASSERT_TRUE(source->seek(3));
    EXPECT_THAT(readAll(*source, 9), testing::ElementsAre(-1.0, 1.0));
    writeFile(path("a.dat"), QByteArray::fromHex("aaaa ff00ff aa")); // up to a header
    source = open(path("a.sigmf-meta"));
    EXPECT_THAT(readAll(*source, 9), testing::ElementsAre(1.0, -1.0, 1.0));
}

TEST_F(Recordings, OfSigmfMayBeInAnArchive)
{
    const QByteArray name = "folder/" + QByteArray(200, 'n');
    const std::pair<QByteArray, QByteArray> meta{name + ".sigmf-meta", sigmfMetadata};
    const std::pair<QByteArray, QByteArray> data{name + ".sigmf-data", QByteArray(4000, '\x40')};
    const std::pair<QByteArray, QByteArray> shadow{"folder/._a.sigmf-meta", "attributes"};
    const std::pair<QByteArray, QByteArray> other{"b.sigmf-meta", "{}"};
    using Files = std::vector<std::pair<QByteArray, QByteArray>>;
    const std::tuple<Files, std::int64_t, const char*> rows[] = {
        {{meta, data}, 1000, ""},
        {{data, shadow, meta}, 1000, ""},
        {{meta, data, other}, 1000, "2 recordings"},
        {{meta}, 0, "holds no samples folder/nnn"},
        {{data}, 0, "no SigMF recording"}};
    for (const auto& [files, sampleCount, says] : rows) {
        SCOPED_TRACE(says);
        writeArchive(path("a.sigmf"), files);
        const auto source = open(path("a.sigmf"));
        EXPECT_EQ(source ? source->sampleCount() : 0, sampleCount);
        EXPECT_THAT((why + notices.join(' ')).toStdString(), testing::HasSubstr(says));
        EXPECT_THAT(source ? readAll(*source, 999) : std::vector<double>(),
                    testing::Each(16448.0 / 32768.0));
    }
    writeArchive(path("a.sigmf"), {meta, data});
    QFile(path("a.sigmf")).resize(QFileInfo(path("a.sigmf")).size() / 2);
    EXPECT_GT(open(path("a.sigmf"))->sampleCount(), 10);
    EXPECT_TRUE(notices[0].contains("cut off"));
    writeFile(path("a.sigmf"), "This is no archive.");
    EXPECT_FALSE(open(path("a.sigmf")));
    EXPECT_TRUE(why.contains("not an archive")) << qPrintable(why);
}

TEST(Nrz, KeepsItsFramesWhereverItIsReadFrom)
{
    NrzSettings settings;
    settings.noise = 0.0;
    NrzSource source(settings);
    ASSERT_EQ(source.facts().frameLength, 1600.0);
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

TEST(ModulationSource, HasTheErrorsThatItsSettingsMake)
{
    const auto points = modulationKinds::points(ModulationKind::Qam64);
    for (const double phaseNoise : {0.0, 1e-3, 2e-3}) {
        ModulationSettings settings;
        settings.modulation = ModulationKind::Qam64;
        settings.snrDb = 25.0;
        settings.phaseNoise = phaseNoise;
        settings.seed = 50; // whose phase strays most from 3000 to 6000
        ModulationSource source(settings);
        constexpr std::size_t perSymbol = ModulationSource::samplesPerSymbol;
        std::vector<double> samples;
        source.read(samples, 40000 * perSymbol);
        density::ErrorVectors errors(points);
        for (std::size_t k = 0; k < samples.size(); k += 2 * perSymbol)
            errors.add(static_cast<float>(samples[k]), static_cast<float>(samples[k + 1]));
        const density::Figure mer = errors.figures().mer;
        // Pulses that are cut off after ten symbols, and filters, leave 37 dB at the worst.
        const double least =
            -10.0 * std::log10(std::pow(10.0, -settings.merDb() / 10.0) + std::pow(10.0, -3.7));
        EXPECT_LE(mer.low, settings.merDb()) << phaseNoise;
        EXPECT_GE(mer.high, least) << phaseNoise;
        EXPECT_LT(mer.high - mer.low, 0.5);
    }
}

} // namespace
