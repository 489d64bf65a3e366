// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverSettings.h"

#include <cmath>
#include <tuple>

namespace {

const char* const filters[] = {"rrc", "rc", "gaussian", "boxcar", "half-sine"};

} // namespace

QStringList ReceiverSettings::filterNames()
{
    QStringList names;
    for (const char* name : filters)
        names += QString::fromLatin1(name);
    return names;
}

std::optional<ReceiverSettings::Filter> ReceiverSettings::filterOf(const QString& name)
{
    const int index = int(filterNames().indexOf(name.toLower()));
    return index < 0 ? std::nullopt : std::optional(static_cast<Filter>(index));
}

Result<void> ReceiverSettings::check(double sampleRate) const
{
    if (!isOn)
        return {};
    if (!(std::abs(shift) <= sampleRate))
        return failure(
            tr("a shift of %1 Hz is more than the sample rate; give a smaller one").arg(shift));
    if (bandwidth && !(*bandwidth >= minChannel * sampleRate && *bandwidth < sampleRate))
        return failure(
            tr("a channel of %1 Hz cannot be had; give a bandwidth of %2 to less than %3 Hz")
                .arg(*bandwidth)
                .arg(minChannel * sampleRate)
                .arg(sampleRate));
    if (squelch && !(*squelch >= minSquelch && *squelch <= maxSquelch))
        return failure(tr("a squelch of %1 dB cannot be had; give %2 to %3")
                           .arg(*squelch)
                           .arg(minSquelch)
                           .arg(maxSquelch));
    if (rollOff && !(*rollOff >= minRollOff && *rollOff <= maxRollOff))
        return failure(tr("a roll-off of %1 cannot be had; give %2 to %3")
                           .arg(*rollOff)
                           .arg(minRollOff)
                           .arg(maxRollOff));
    const bool isOneEach = symbolRate && std::abs(*symbolRate / sampleRate - 1.0) < 1e-9;
    if (symbolRate && !isOneEach &&
        !(sampleRate / *symbolRate >= minSamplesPerSymbol &&
          sampleRate / *symbolRate <= maxSamplesPerSymbol))
        return failure(tr("a receiver takes %1 to %2 samples of a symbol, which a symbol rate of "
                          "%3 Bd does not give; give another one")
                           .arg(minSamplesPerSymbol)
                           .arg(maxSamplesPerSymbol)
                           .arg(*symbolRate));
    return {};
}

bool ReceiverSettings::operator==(const ReceiverSettings& other) const
{
    const auto all = [](const ReceiverSettings& s) {
        return std::tie(s.isOn, s.removesDc, s.shift, s.bandwidth, s.squelch, s.hasAutoSquelch,
                        s.demodulation, s.symbolRate, s.hasGainControl, s.filter, s.rollOff,
                        s.hasTimingRecovery, s.modulation, s.characterBits);
    };
    return all(*this) == all(other);
}
