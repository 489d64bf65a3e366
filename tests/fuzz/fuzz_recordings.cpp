// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Opens files of any content as the workbench does, reads in them and seeks, and looks whether what
// comes back fits together. Built as a fuzz target for ORVANE_FUZZ_FILE; else as a test of the
// inputs that fuzzing kept: ORVANE_FUZZ_INPUTS/NAME/*, each taken for a file NAME, or attacks of
// NAME.
#include "Attack.h"
#include "workbench/sources/RecordingOpener.h"

#include <QDirIterator>
#include <QHash>
#include <QTemporaryDir>

namespace {

constexpr std::size_t blockLength = 3000;

QString write(const char* name, const QByteArray& content)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QString::fromLatin1(name)));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "a file");
    return file.fileName();
}

/// Reads on to the end, or long enough; whether it was the end.
bool readOn(SignalSource& source)
{
    std::vector<double> block;
    for (int i = 0; i < 40; ++i) {
        const std::int64_t before = source.position();
        const std::size_t count = source.read(block, blockLength);
        require(count <= blockLength &&
                    block.size() == count * static_cast<std::size_t>(source.facts().valueCount()) &&
                    source.position() == before + static_cast<std::int64_t>(count),
                "a block");
        if (count == 0)
            return true;
    }
    return false;
}

void use(SignalSource& source)
{
    require(Recording::isSampleRate(source.facts().sampleRate) && source.facts().channelCount > 0 &&
                source.sampleCount().value_or(1) > 0 && source.position() == 0,
            "the signal");
    const bool isWhole = readOn(source);
    const std::int64_t end = source.position();
    std::vector<double> block;
    for (const std::int64_t position : {end / 2, std::int64_t(0), end, end + 7, std::int64_t(-1)}) {
        const std::int64_t before = source.position();
        const bool hasMoved = source.seek(position);
        require(source.position() == (hasMoved ? position : before) || source.position() == 0,
                "a position");
        source.read(block, 1);
    }
    require(source.seek(0) && (!isWhole || readOn(source)), "the same once more");
}

/// @param name  a.csv; a.sigmf-meta, which has samples beside it; a.sigmf; a.wav; or a.raw, whose
///              first byte chooses the format.
void readBack(const char* name, const QByteArray& content)
{
    static const char* const formats[] = {"rf32", "cf64_be", "ri8",     "cu8",  "ci16_be",
                                          "ru16", "ci32",    "ru32_be", "cu64", "ri64"};
    Recording::Options options;
    if (qstrcmp(name, "a.raw") == 0)
        options.format = SampleFormat::parse(QString::fromLatin1(
            formats[content.isEmpty() ? 0 : static_cast<unsigned char>(content[0]) % 10]));
    write("a.sigmf-data", QByteArray(96, '\x40'));
    const auto recording = RecordingOpener::open(write(name, content), options);
    require(recording ? recording->source != nullptr : !recording.error().sentence.isEmpty(),
            "a signal or a reason");
    if (recording)
        use(*recording->source);
}

} // namespace

#ifdef ORVANE_FUZZ_FILE
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    readBack(ORVANE_FUZZ_FILE, {reinterpret_cast<const char*>(bytes), static_cast<int>(size)});
    return 0;
}
#else
#include <gtest/gtest.h>

TEST(FuzzInputs, DoNoHarm)
{
    const QHash<QString, Attack*> attacks{{QStringLiteral("density"), attackDensity},
                                          {QStringLiteral("feed"), attackFeed},
                                          {QStringLiteral("mask"), attackMask},
                                          {QStringLiteral("plot"), attackPlot},
                                          {QStringLiteral("publisher"), attackPublisher},
                                          {QStringLiteral("receiver"), attackReceiver},
                                          {QStringLiteral("stream"), attackStream}};
    QDirIterator files(QStringLiteral(ORVANE_FUZZ_INPUTS), QDir::Files,
                       QDirIterator::Subdirectories);
    ASSERT_TRUE(files.hasNext());
    while (files.hasNext()) {
        QFile file(files.next());
        SCOPED_TRACE(qPrintable(file.fileName()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString name = files.fileInfo().dir().dirName();
        const QByteArray content = file.readAll();
        Bytes input(content.constData(), static_cast<std::size_t>(content.size()));
        if (Attack* attack = attacks.value(name))
            attack(input);
        else
            readBack(qPrintable(name), content);
    }
}
#endif
