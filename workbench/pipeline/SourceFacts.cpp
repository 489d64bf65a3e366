// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/SourceFacts.h"

SourceFacts SourceFacts::of(const SignalSource& source)
{
    SourceFacts facts;
    facts.name = source.name();
    facts.sampleRate = source.sampleRate();
    facts.channelCount = source.channelCount();
    facts.valueCount = source.valueCount();
    facts.isComplex = source.isComplex();
    facts.isLive = source.isLive();
    facts.sampleCount = source.sampleCount();
    facts.symbolRate = source.symbolRate();
    facts.firstSymbol = source.firstSymbol();
    facts.frameLength = source.frameLength();
    return facts;
}
