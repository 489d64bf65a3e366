// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"
#include "workbench/sources/Recording.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace zmq {
class message_t;
}

/// What a ZeroMQ publisher sends: each message some samples of one format, without a header. Of a
/// message in parts, as it comes with a topic, the last part. Messages that are empty, absurdly
/// long or not whole samples are left out, as are those that nobody reads in time; their samples
/// count as lost, and one does where the publisher was away. A publisher whose message does not
/// end is left.
///
/// Connects to where it is told, binds nothing, and connects again for as long as it lives.
class ZmqSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(ZmqSource)
public:
    static constexpr std::size_t maxMessageSize = 16 << 20; ///< bytes, of all parts

    /// Connects. The publisher need not be there yet.
    /// @param address  zmq://HOST:PORT
    static Result<Recording> open(const QString& address, const SampleFormat& format,
                                  double sampleRate);
    ~ZmqSource() override;

protected:
    bool receive(std::vector<char>& bytes) override;
    QString amiss() const override;

private:
    class Connection;
    struct Piece;

    ZmqSource(const QString& address, const QString& endpoint, const SampleFormat& format,
              double sampleRate);
    void run();
    void connect();
    bool take();
    void keep(zmq::message_t&& message);
    static std::size_t memoryOf(const zmq::message_t& message);
    void note();
    void leaveOut(std::size_t size, const QString& why);

    // Of the thread that receives, which takes whatever comes at once: only so is it known how much
    // there is of a message that is not whole.
    const QString m_endpoint;
    std::unique_ptr<Connection> m_connection; // null where there could be none
    Clock::time_point m_lastUp;               // or tried
    int m_badCount = 0;                       // messages that were left out

    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_hasCome;
    std::deque<Piece> m_waiting;
    std::size_t m_waitingSize = 0; // bytes
    std::int64_t m_lost = 0;       // samples after those that wait
    bool m_isStopping = false;
    bool m_isUp = false;
    bool m_wasUp = false;
    bool m_metStranger = false;
    Clock::time_point m_lastBad; // message that was left out...
    QString m_bad;               // ...and why, empty for none

    std::thread m_thread;
};
