// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/RawGuess.h"

#include "workbench/sources/Recording.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr double largestUntoldRate = 30e6; // Hz: a larger number without a unit is a frequency

double factorOf(const QString& prefix)
{
    switch (prefix.isEmpty() ? ' ' : prefix[0].toLower().toLatin1()) {
    case 'k':
        return 1e3;
    case 'm':
        return 1e6;
    case 'g':
        return 1e9;
    default:
        return 1.0;
    }
}

std::optional<double> usable(double rate)
{
    return Recording::isSampleRate(rate) ? std::optional<double>(rate) : std::nullopt;
}

/// Sample rate in a name such as "fs=2e6" or "rate_250k".
std::optional<double> namedRate(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?:^|[_\\-. ])(?:fs|sr|rate|samprate|samp_rate|samplerate)[=_\\-]?"
                       "(\\d+(?:\\.\\d+)?(?:e\\d+)?)([kM]?)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(name);
    return match.hasMatch() ? usable(match.captured(1).toDouble() * factorOf(match.captured(2)))
                            : std::nullopt;
}

/// The last number with a prefix or a unit that may be a sample rate.
std::optional<double> rateWithUnit(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?<![\\d.A-Za-z])(\\d+(?:\\.\\d+)?)([kMG]?)(sps|S/s|Hz)?(?![A-Za-z0-9])"),
        QRegularExpression::CaseInsensitiveOption);
    std::optional<double> rate;
    auto matches = pattern.globalMatch(name);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString unit = match.captured(3).toLower();
        if (match.captured(2).isEmpty() && unit.isEmpty())
            continue;
        const double value = match.captured(1).toDouble() * factorOf(match.captured(2));
        if (unit.startsWith(QLatin1Char('s')))
            return usable(value);
        if (value <= largestUntoldRate)
            rate = usable(value);
    }
    return rate;
}

/// The sample rate where a frequency and a sample rate follow one another in whole hertz.
std::optional<double> rateAfterFrequency(QString name)
{
    static const QRegularExpression date(
        QStringLiteral("(?:19|20)\\d{6}[_T\\-]?\\d{6}Z?|\\d{4}-\\d\\d-\\d\\d"));
    static const QRegularExpression pattern(
        QStringLiteral("(?:^|[_\\-])\\d{6,11}(?:Hz)?[_\\-](\\d{4,9})(?=[_\\-.]|$)"));
    name.remove(date);
    const QRegularExpressionMatch match = pattern.match(name);
    return match.hasMatch() ? usable(match.captured(1).toDouble()) : std::nullopt;
}

/// How much the bytes at each place of a word jump from one word to the next: 0 for bytes that do
/// not change, 1 for random bytes.
template<std::size_t byteCount>
std::array<double, byteCount> jumpsOf(const QByteArray& bytes)
{
    // Mean square distance of random bytes, modulo 256.
    constexpr double random = 128.0 * 128.0 / 3.0;
    constexpr int step = byteCount;
    std::array<double, byteCount> jumps{};
    for (int i = step; i < bytes.size(); ++i) {
        const auto way = static_cast<qint8>(bytes[i] - bytes[i - step]);
        jumps[static_cast<std::size_t>(i % step)] += static_cast<double>(way) * way;
    }
    for (double& jump : jumps)
        jump /= random * std::max(1.0, static_cast<double>(bytes.size()) / byteCount - 1.0);
    return jumps;
}

constexpr double clear = 4.0; // times as much

/// Whether two bytes jump as the low and the high byte of a number do.
bool areLowAndHigh(double low, double high)
{
    constexpr double least = 0.3; // of the jumps of random bytes
    return low > least && low > clear * high && high > 0.0;
}

/// Whether bytes, the lowest first, belong to integers of more than 16 bits: the low bytes are
/// random, or 0 where fewer bits are used.
template<std::size_t byteCount>
bool isLongInteger(const std::array<double, byteCount>& jumps)
{
    const auto isLow = [](double jump) {
        constexpr double nearlyRandom = 0.7;
        return jump > nearlyRandom || jump == 0.0;
    };
    return areLowAndHigh(jumps[byteCount - 2], jumps[byteCount - 1]) &&
           std::all_of(jumps.begin(), jumps.end() - 2, isLow);
}

/// Part of the numbers whose magnitude is usual for signals.
double usualPart(const QByteArray& bytes, unsigned bits)
{
    SampleFormat format;
    format.bits = bits;
    std::vector<double> values(static_cast<std::size_t>(bytes.size()) / format.byteCount());
    format.convert(bytes.constData(), values.size(), values.data());
    const auto isUsual = [](double value) {
        constexpr double smallest = 1e-7;
        constexpr double largest = 1e6;
        return value == 0.0 || (std::abs(value) > smallest && std::abs(value) < largest);
    };
    const auto count = std::count_if(values.begin(), values.end(), isUsual);
    return values.empty() ? 0.0 : static_cast<double>(count) / static_cast<double>(values.size());
}

/// Tells signed from unsigned bytes: read as the wrong kind, they would jump from one end of the
/// range to the other wherever they pass the middle. Samples of a channel are two bytes apart, or
/// one.
std::optional<SampleFormat::Kind> kindOfBytes(const QByteArray& bytes)
{
    double asSigned = 0.0;
    double asUnsigned = 0.0;
    for (int i = 2; i < bytes.size(); ++i) {
        const double first = static_cast<qint8>(bytes[i]) - static_cast<qint8>(bytes[i - 2]);
        const double second = static_cast<quint8>(bytes[i]) - static_cast<quint8>(bytes[i - 2]);
        asSigned += first * first;
        asUnsigned += second * second;
    }
    if (asUnsigned > clear * asSigned)
        return SampleFormat::Kind::Signed;
    if (asSigned > clear * asUnsigned)
        return SampleFormat::Kind::Unsigned;
    return std::nullopt;
}

/// Format of the numbers in a file; none when that is not clear.
std::optional<SampleFormat> numbersIn(const QByteArray& bytes)
{
    constexpr double nearlyAll = 0.99;
    using Kind = SampleFormat::Kind;
    if (std::count(bytes.begin(), bytes.end(), bytes[0]) == bytes.size())
        return std::nullopt;
    // Read as a short number, the lower half of a long one has any exponent, or is 0.
    const bool isLong = usualPart(bytes, 64) > nearlyAll;
    const bool isShort = usualPart(bytes, 32) > nearlyAll;
    if (isLong || isShort)
        return isLong && isShort ? std::nullopt
                                 : std::optional(SampleFormat{Kind::Float, isLong ? 64U : 32U});
    const std::array<double, 4> jumps = jumpsOf<4>(bytes);
    const std::array<double, 4> reversed = {jumps[3], jumps[2], jumps[1], jumps[0]};
    if (isLongInteger(jumps) || isLongInteger(reversed))
        return SampleFormat{Kind::Signed, 32, false, isLongInteger(reversed)};
    const auto [first, second, third, fourth] = jumps;
    if (areLowAndHigh(std::min(first, third), std::max(second, fourth)))
        return SampleFormat{Kind::Signed, 16};
    if (areLowAndHigh(std::min(second, fourth), std::max(first, third)))
        return SampleFormat{Kind::Signed, 16, false, true};
    const auto [least, most] = std::minmax({first, second, third, fourth});
    const auto kind = kindOfBytes(bytes);
    return kind && most < clear * least ? std::optional(SampleFormat{*kind, 8}) : std::nullopt;
}

} // namespace

RawGuess RawGuess::ofName(const QString& fileName)
{
    const QFileInfo file(fileName);
    const QString name = file.completeBaseName();
    RawGuess guess;
    guess.format = SampleFormat::ofEnding(file.suffix());
    if (!guess.format) {
        static const QRegularExpression separators(QStringLiteral("[_\\-. ]"));
        for (const QString& part : name.split(separators)) {
            QString format = part.toLower();
            if (format == QLatin1String("fc")) // complex floating point numbers
                format = QStringLiteral("fc32");
            const auto found = SampleFormat::ofEnding(format);
            // "s16" and "iq" may be anything in the middle of a name.
            if (found && format.size() > 3)
                guess.format = found;
        }
    }
    guess.sampleRate = namedRate(name);
    if (!guess.sampleRate)
        guess.sampleRate = rateWithUnit(name);
    if (!guess.sampleRate)
        guess.sampleRate = rateAfterFrequency(name);
    static const QRegularExpression channels(
        QStringLiteral("(?:^|[_\\-])([1-9]\\d?)ch(?:[_\\-]|$)"),
        QRegularExpression::CaseInsensitiveOption);
    if (const QRegularExpressionMatch match = channels.match(name); match.hasMatch())
        guess.channelCount = match.captured(1).toInt();
    return guess;
}

bool RawGuess::isRaw(const QString& fileName)
{
    const QString ending = QFileInfo(fileName).suffix().toLower();
    const QStringList usual{QStringLiteral("raw"), QStringLiteral("bin"), QStringLiteral("pcm")};
    return SampleFormat::ofEnding(ending) || usual.contains(ending);
}

std::optional<Message> RawGuess::doubt(const QString& fileName, const SampleFormat& format)
{
    constexpr qint64 looked = 1 << 17; // bytes
    constexpr int least = 4096;        // fewer bytes tell too little
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.read(looked);
    bytes.chop(bytes.size() % 8);
    if (bytes.size() < least)
        return std::nullopt;
    const std::array<double, 3> jumps = jumpsOf<3>(bytes);
    if (isLongInteger(jumps) || isLongInteger(std::array{jumps[2], jumps[1], jumps[0]}))
        return Message(tr("its bytes look like integers of 24 bits, which cannot be read; convert "
                          "them to 32"),
                       Hint::Format);
    const auto numbers = numbersIn(bytes);
    if (!numbers)
        return std::nullopt;
    // The bytes cannot tell whether samples are complex, or whether long integers are signed.
    const auto isUnsigned = format.kind == SampleFormat::Kind::Unsigned && format.bits > 8;
    const auto kind = isUnsigned ? SampleFormat::Kind::Signed : format.kind;
    if (kind == numbers->kind && format.bits == numbers->bits &&
        (format.bits == 8 || format.isBigEndian == numbers->isBigEndian))
        return std::nullopt;
    SampleFormat likely = *numbers;
    likely.isComplex = format.isComplex;
    return Message(tr("its bytes look like %1 rather than %2").arg(likely.name(), format.name()),
                   Hint::Format);
}
