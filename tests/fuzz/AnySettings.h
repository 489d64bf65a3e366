// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Attack.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/sources/Recording.h"

inline double anyRate(Bytes& input)
{
    const double hertz =
        input.flag()
            ? input.oneOf({Recording::minSampleRate, 1.0, 48e3, 1e6, Recording::maxSampleRate})
            : input.number();
    return Recording::isSampleRate(hertz) ? hertz : 48e3;
}

/// Any that a symbol rate makes of a sample rate.
inline double anySamplesPerSymbol(Bytes& input)
{
    const double usual = input.oneOf({1.0, 2.0, 2.01, 3.7, 4.0, 7.3, 8.0, 20.0, 1000.0, 1e5});
    const double any = input.flag() ? std::abs(input.number()) : usual;
    return any >= 1e-18 && any <= 1e18 ? any : usual;
}

inline ChannelChoice anyChannel(Bytes& input, int valueCount)
{
    const auto count = static_cast<unsigned>(valueCount);
    return {static_cast<int>(input.below(count)), static_cast<int>(input.below(count + 1)) - 1};
}

/// Half of them without a flaw on purpose.
inline ReceiverSettings anySettings(Bytes& input, double sampleRate)
{
    using Settings = ReceiverSettings;
    const bool isTame = input.flag();
    const auto within = [&](double least, double most) -> std::optional<double> {
        if (!isTame || !input.flag())
            return isTame ? std::nullopt : input.maybe();
        const double part = input.take<std::uint16_t>() / 65536.0;
        return least + part * (most - least);
    };
    Settings settings;
    settings.isOn = input.below(4) > 0;
    settings.removesDc = input.flag();
    settings.shift = within(-sampleRate, sampleRate).value_or(0.0);
    settings.bandwidth = within(1e-4 * sampleRate, 0.999 * sampleRate);
    settings.squelch = within(-60.0, 10.0);
    settings.hasAutoSquelch = input.flag();
    settings.demodulation = input.oneOf(
        {Settings::Demodulation::Linear, Settings::Demodulation::Fm, Settings::Demodulation::Am});
    if (input.flag())
        settings.symbolRate =
            isTame ? sampleRate / anySamplesPerSymbol(input) : std::abs(input.number());
    settings.hasGainControl = input.flag();
    if (input.flag())
        settings.filter = static_cast<Settings::Filter>(input.below(5));
    settings.rollOff = within(0.01, 1.0);
    settings.hasTimingRecovery = input.below(4) > 0;
    if (input.flag())
        settings.modulation = static_cast<Settings::Modulation>(input.below(7));
    if (input.flag())
        settings.characterBits = 5 + static_cast<int>(input.below(5));
    return settings;
}
