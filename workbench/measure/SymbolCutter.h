// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/LowPass.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// Goes through the symbols of a signal that comes in any number of blocks, and cuts the traces
/// around them: each is two symbols long, with the instant of decision of its symbol in the middle,
/// and equally many samples in either half. Traces do not span gaps, silenced samples, samples that
/// are not finite, symbols that are not good, or neighbours that do not share a clock.
class SymbolCutter
{
public:
    /// A symbol that is reported, in order.
    struct Place
    {
        const Symbol& symbol;
        bool isStart; ///< it does not follow the symbol before
        bool isWhole; ///< it has a trace, see trace
    };
    using Take = std::function<void(const Place& place)>;
    /// Takes symbols that are in no place: those in and next to what is torn, and the first and the
    /// last of what comes in one piece.
    using Skip = std::function<void(const Symbol& symbol, bool isTorn)>;

    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    /// @param perSymbol  samples of half a trace, at least 1.
    /// @param skip       may be null.
    SymbolCutter(const SignalFormat& format, double bandwidth, std::size_t perSymbol, Take take,
                 Skip skip = nullptr);
    SymbolCutter(const SymbolCutter&) = delete;
    SymbolCutter& operator=(const SymbolCutter&) = delete;

    /// Takes some samples of the next block, or of a block anywhere else. Does nothing for a format
    /// without symbols, or with one sample a symbol.
    void add(const SignalBlock& block, std::size_t first, std::size_t count);
    void add(const SignalBlock& block) { add(block, 0, block.count()); }
    /// Ends the stretch: the next samples do not follow.
    void finish() { end(false); }

    /// While a symbol with a trace is reported: its trace, 2 * perSymbol + 1 samples. Valid until
    /// the next call.
    const std::vector<double>& trace();
    /// Likewise the sample nearest to its middle.
    double nearest() const;

private:
    void start(std::int64_t position);
    void cut(bool isEnd);
    void end(bool isTorn);
    bool isWhole(const Symbol& a, const Symbol& b) const;
    void interpolate(const Symbol& from, const Symbol& to, double* samples) const;
    double valueAt(double position) const;
    double origin() const;
    void skip(const Symbol& symbol, bool isTorn) const;

    SignalFormat m_format;
    double m_bandwidth;
    std::size_t m_perSymbol;
    Take m_take;
    Skip m_skip;

    // The stretch, from the symbol before that of the next trace on.
    bool m_isOpen = false;
    bool m_isAfterTorn = false;  // it starts next to what is torn
    bool m_isStart = true;       // no symbol of it was reported yet
    std::int64_t m_position = 0; // of the first sample
    std::vector<double> m_samples;
    std::size_t m_nextCut = 0; // samples
    std::vector<Symbol> m_symbols;
    std::size_t m_middle = 0; // the symbol that is reported
    std::vector<double> m_trace;
    // The symbol of the trace, whose second half is the first half of the next trace.
    std::size_t m_traced = 0;
    std::optional<LowPass> m_filter;
};
