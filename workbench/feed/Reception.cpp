// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Reception.h"

Result<void> Reception::check() const
{
    if (source.firstSymbol)
        return {};
    ReceiverSettings settings = receiver;
    settings.symbolRate = symbolRate();
    return settings.check(source.sampleRate);
}

ReceiverSettings Reception::used() const
{
    ReceiverSettings settings;
    if (receiver.isOn && !source.firstSymbol && check()) {
        settings = receiver;
        settings.symbolRate = symbolRate();
    } else {
        settings.symbolRate = givenRate;
        settings.characterBits = receiver.characterBits;
    }
    return settings;
}

QString Reception::levelUnit(const SignalFormat& format) const
{
    const bool isFm = receiver.isOn && format.isDemodulated &&
                      receiver.demodulation == ReceiverSettings::Demodulation::Fm;
    return isFm ? QStringLiteral("Hz") : QString();
}

std::optional<double> Reception::frameLength(const SignalFormat& format) const
{
    return format.sampleRate == source.sampleRate ? source.frameLength : std::nullopt;
}
