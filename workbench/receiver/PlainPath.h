// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/CharacterClock.h"
#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalPath.h"
#include "workbench/receiver/SymbolTiming.h"
#include "workbench/sources/ChannelChoice.h"

/// Passes the signal unchanged and finds its symbols: as the source says, or from the samples of
/// its channel.
class PlainPath : public SignalPath
{
public:
    /// @param settings  only the symbol rate, which overrides that of the input, and the bits of a
    ///                  character count.
    PlainPath(const SignalFacts& input, const ChannelChoice& channel,
              const ReceiverSettings& settings);

    void process(const std::vector<double>& values, std::vector<SignalBlock>& blocks) override;
    void finish(std::vector<SignalBlock>& blocks) override;
    void reset(std::int64_t position, bool goesOn) override;

private:
    enum class Clock { None, Known, EachSample, Recovered, Characters };

    void add(const std::vector<double>& values);
    void findSymbols(bool isEnd);
    void findRecovered();
    void findCharacters();
    void measureClock(const CharacterClock::Character& character);
    void addSymbol(double position, SymbolState state);
    void passOn(std::int64_t end, std::vector<SignalBlock>& blocks);
    double pairAt(const std::vector<double>& values, double position) const;

    ChannelChoice m_channel;
    std::size_t m_first; // first value of the constellation's pair
    bool m_hasQ;
    Clock m_clock = Clock::None;
    double m_firstSymbol = 0.0;
    std::unique_ptr<SymbolTiming> m_timing;
    std::optional<SymbolKnot> m_knot;
    int m_bits; // of a character
    std::unique_ptr<CharacterClock> m_characters;
    double m_nextSymbol = 0.0;
    std::int64_t m_start = 0;        // where the current stretch began
    std::int64_t m_known = 0;        // position up to which its symbols were found
    SignalBlock m_waiting;           // samples that were not passed on
    std::vector<double> m_before[2]; // I and Q just before it, to interpolate
};
