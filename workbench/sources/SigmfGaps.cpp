// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SigmfGaps.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

// Relative error of the sample clock that is tolerated: radios without a good oscillator reach some
// 1e-5.
constexpr double clockTolerance = 1e-4;

/// Number of samples that are missing between two captures, 0 or less for none; nullopt when that
/// is not known.
std::optional<double> missing(const SigmfGaps::Capture& one, const SigmfGaps::Capture& next,
                              std::optional<double> sampleRate)
{
    const auto there = static_cast<double>(next.firstSample - one.firstSample);
    if (there < 0.0)
        return std::nullopt;
    if (one.globalIndex && next.globalIndex)
        return static_cast<double>(*next.globalIndex - *one.globalIndex) - there;
    if (!one.time || !next.time || !sampleRate)
        return std::nullopt;
    const double seconds = static_cast<double>(next.time->seconds - one.time->seconds) +
                           (next.time->part - one.time->part);
    const double count = std::round(seconds * *sampleRate - there);
    // Each time is rounded to its last digit, the samples to whole ones.
    const double tolerance = std::max(one.time->resolution, next.time->resolution) * *sampleRate +
                             clockTolerance * there + 1.0;
    return count > tolerance ? count : 0.0;
}

} // namespace

std::optional<SigmfGaps::Time> SigmfGaps::time(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d)(?:\\.(\\d{1,15}))?Z?$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QDateTime whole =
        QDateTime::fromString(match.captured(1) + QLatin1Char('Z'), Qt::ISODate);
    if (!match.hasMatch() || !whole.isValid())
        return std::nullopt;
    const QString digits = match.captured(2);
    return Time{whole.toSecsSinceEpoch(), (QStringLiteral("0.") + digits).toDouble(),
                std::pow(10.0, -digits.size())};
}

std::optional<Message> SigmfGaps::notice(std::optional<double> sampleRate) const
{
    double all = 0.0;
    int places = 0;
    std::int64_t first = 0;
    bool isExact = true;
    for (std::size_t i = 1; i < m_captures.size(); ++i) {
        const double count = missing(m_captures[i - 1], m_captures[i], sampleRate).value_or(0.0);
        if (!(count > 0.0))
            continue;
        if (places++ == 0)
            first = m_captures[i].firstSample;
        all += count;
        isExact = isExact && m_captures[i - 1].globalIndex && m_captures[i].globalIndex;
    }
    if (places == 0)
        return std::nullopt;
    const QString number = QString::number(all, 'f', 0);
    return tr("samples are missing between its captures (%1, the first before sample %2; places: "
              "%3), what is on either side is shown joined")
        .arg(isExact ? number : tr("about %1").arg(number))
        .arg(first)
        .arg(places);
}
