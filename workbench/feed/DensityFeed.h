// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Handover.h"
#include "workbench/feed/Coverage.h"
#include "workbench/measure/SymbolCutter.h"
#include "workbench/pipeline/BlockBuffer.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// Gives all symbols of what plays, and not only those that a diagram shows, to who counts them:
/// the trace about each, or its point. Works on a thread of its own while it is on, else it costs
/// nothing.
///
/// Symbols have numbers, from 0 on as they come, and are told once: a stretch that is played again
/// brings nothing new. A recording loses none of them: take waits. A live signal waits for nobody:
/// what is too much is left out and counted.
class DensityFeed
{
public:
    enum class Kind { Traces, Points };
    static constexpr std::size_t perSymbol = 16; ///< samples of a trace
    static constexpr std::size_t traceLength = 2 * perSymbol + 1;
    /// Symbols whose times are known: more than who counts them keeps and has waiting.
    static constexpr std::size_t mostTimes = std::size_t{1} << 20;

    struct Batch
    {
        std::vector<float> samples;   ///< trace after trace, or I, Q, I, Q...
        std::int64_t firstSymbol = 0; ///< number; the others follow it one by one
        std::int64_t torn = 0;        ///< symbols before it that have no whole trace, or no point
    };
    /// Takes batches, on the feed's thread.
    /// @param mayWait  else what cannot be taken at once is to be left out.
    using Sink = std::function<void(Batch batch, bool mayWait)>;

    explicit DensityFeed(Kind kind)
        : m_kind(kind)
    {}
    ~DensityFeed();

    // GUI thread only.

    /// Switches it on with a sink, or off with null: then the former one is not called any more.
    void setSink(Sink sink);
    bool isOn() const { return m_sink != nullptr; }
    /// Forgets all symbols, and starts anew with a signal.
    /// @param bandwidth  of a low-pass before, symbol rates; 0: none.
    void open(const SignalFormat& format, double bandwidth, bool isLive);
    double bandwidth() const { return m_bandwidth; }
    /// Takes what is played, after that of the last call or anywhere else.
    void take(const BlockPart& part);
    /// What was taken last is the end of the signal.
    void finish();
    /// Waits until the sink has all that was taken.
    void wait();

    /// Of a symbol: its middle in the input, s; none of one that is too old.
    std::optional<double> timeOf(std::int64_t symbol) const;
    /// The symbol about a time.
    std::optional<std::int64_t> symbolAt(double seconds) const;
    /// s, of a symbol.
    double period() const { return m_format.samplesPerSymbol / m_format.sampleRate; }

private:
    using Lock = std::lock_guard<std::mutex>;
    struct Item
    {
        BlockPart part;           // without a block: the end
        std::int64_t leftOut = 0; // symbols of parts before it that were not taken
        std::shared_ptr<std::promise<void>> isReached; // instead of a part, or null
    };

    void stop();
    void run();
    void give(const BlockPart& part);
    void process(const BlockPart& part);
    void followRun(const BlockPart& part);
    void takePlace(const SymbolCutter::Place& place);
    void takeEdge(const Symbol& symbol, bool isTorn);
    void takePoint(const Symbol& symbol);
    bool isNew(double time);
    std::int64_t number(double time);
    void add(std::int64_t symbol, const float* samples, std::size_t count);
    void tear();
    void flush();

    const Kind m_kind;
    Sink m_sink;
    SignalFormat m_format;
    double m_bandwidth = 0.0;
    bool m_isLive = false;

    std::thread m_thread; // while it is on
    std::atomic<bool> m_isStopping = false;
    values::Handover<Item> m_items; // by samples
    std::int64_t m_leftOut = 0;     // symbols of parts that were not taken, to be told
    mutable std::mutex m_mutex;     // of times and numbers
    std::deque<double> m_times;     // s, of the newest symbols
    std::int64_t m_nextNumber = 0;

    // The thread's.
    std::unique_ptr<SymbolCutter> m_cutter;
    std::optional<Coverage> m_told, m_edges; // none of a live signal
    std::int64_t m_runEnd = 0;               // position, of what was taken last
    Batch m_batch;
    std::int64_t m_batchEnd = 0; // the number that would follow it
    std::vector<float> m_single;
};
