// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"
#include "workbench/sources/Recording.h"

#include <atomic>
#include <memory>
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
    std::optional<Message> amiss() const override;

private:
    class Connection;
    struct Inbox;

    ZmqSource(const QString& address, const QString& endpoint, const SampleFormat& format,
              double sampleRate);
    void run();
    void connect();
    bool take();
    void keep(zmq::message_t&& message);
    void note();
    std::optional<Message> state() const;
    void leaveOut(std::size_t size, const QString& why);

    // Of the thread that receives, which takes whatever comes at once: only so is it known how much
    // there is of a message that is not whole.
    const QString m_endpoint;
    std::unique_ptr<Connection> m_connection; // null where there could be none
    Clock::time_point m_lastUp;               // or tried
    int m_badCount = 0;                       // messages that were left out
    Clock::time_point m_lastBad;              // when the last one was...
    std::optional<Message> m_bad;             // ...and why
    std::int64_t m_lost = 0;                  // samples since the last message that was kept
    bool m_wasUp = false;
    bool m_metStranger = false;

    std::unique_ptr<Inbox> m_inbox; // from that thread to the one that reads
    Trouble m_link;                 // what is amiss with the connection
    std::atomic<bool> m_isUp{false};
    std::atomic<bool> m_isStopping{false};
    std::thread m_thread;
};
