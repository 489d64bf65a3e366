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
