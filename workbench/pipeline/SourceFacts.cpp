// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/SourceFacts.h"

SourceFacts SourceFacts::of(const SignalSource& source)
{
    SourceFacts facts;
    static_cast<Receiver::Input&>(facts) = Receiver::Input::of(source);
    facts.name = source.name();
    facts.channelCount = source.channelCount();
    facts.isLive = source.isLive();
    facts.sampleCount = source.sampleCount();
    facts.frameLength = source.frameLength();
    return facts;
}
