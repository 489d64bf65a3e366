// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "ReadBack.h"

#include "workbench/sources/Recording.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int maxBlockCount = 40;
constexpr std::size_t blockLength = 3000;

void require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "what was read does not fit together: %s\n", what);
    std::abort();
}

void write(const QString& name, const QByteArray& content)
{
    QFile file(name);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "the folder");
}

std::optional<SampleFormat> anyFormat(int choice)
{
    static const char* const names[] = {"rf32", "cf64_be", "ri8",     "cu8",  "ci16_be",
                                        "ru16", "ci32",    "ru32_be", "cu64", "ri64"};
    return SampleFormat::parse(QString::fromLatin1(names[choice % 10]));
}

/// Reads on to the end, or long enough.
/// @return whether the end was reached.
bool readOn(SignalSource& source)
{
    std::vector<double> block;
    for (int i = 0; i < maxBlockCount; ++i) {
        const std::int64_t before = source.position();
        const std::size_t count = source.read(block, blockLength);
        require(count <= blockLength, "the length of a block");
        require(block.size() == count * static_cast<std::size_t>(source.valueCount()),
                "the size of a block");
        require(source.position() == before + static_cast<std::int64_t>(count), "the position");
        if (count == 0)
            return true;
    }
    return false;
}

void use(SignalSource& source)
{
    require(source.sampleRate() > 0.0 && source.sampleRate() <= Recording::maxSampleRate,
            "the rate");
    require(source.channelCount() > 0 && source.sampleCount().value_or(1) > 0, "a count");
    require(source.position() == 0, "the start");
    const bool isWhole = readOn(source);
    const std::int64_t end = source.position();
    std::vector<double> block;
    for (const std::int64_t position : {end / 2, std::int64_t(0), end, end + 7, std::int64_t(-1)}) {
        const std::int64_t before = source.position();
        if (source.seek(position))
            require(source.position() == position, "the position after a seek");
        else
            require(source.position() == before || source.position() == 0, "a position kept");
        source.read(block, 1);
    }
    require(source.seek(0), "the way back to the start");
    require(!isWhole || readOn(source), "an end that comes again");
}

} // namespace

void readBack(const QString& name, const QByteArray& content)
{
    static const QTemporaryDir folder;
    Recording::Options options;
    if (name == QLatin1String("a.sigmf-meta"))
        write(folder.filePath(QStringLiteral("a.sigmf-data")), QByteArray(96, '\x40'));
    if (name == QLatin1String("a.raw"))
        options.format = anyFormat(content.isEmpty() ? 0 : static_cast<unsigned char>(content[0]));
    const QString path = folder.filePath(name);
    write(path, content);
    const Recording recording = Recording::open(path, options);
    require(recording.why.isEmpty() == (recording.source != nullptr), "a signal or a reason");
    if (recording.source)
        use(*recording.source);
}
