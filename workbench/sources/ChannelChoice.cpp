// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ChannelChoice.h"

#include <QStringList>

std::optional<ChannelChoice> ChannelChoice::parse(const QString& text)
{
    const QStringList numbers = text.split(QLatin1Char('-'));
    bool areChannels = numbers.size() <= 2 && numbers.value(0) != numbers.value(1);
    ChannelChoice choice(0);
    for (int k = 0; k < numbers.size() && areChannels; ++k) {
        const int number = numbers[k].toInt(&areChannels);
        areChannels = areChannels && number >= 1 && number <= maxChannel;
        (k == 0 ? choice.value : choice.subtracted) = number - 1;
    }
    return areChannels ? std::optional(choice) : std::nullopt;
}
