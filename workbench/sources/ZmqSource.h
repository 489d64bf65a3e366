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

/// The samples that a ZeroMQ publisher sends. Each message holds samples of one format, without a
/// header; of a message in several parts, as with a topic, the last part counts. Messages that are
/// empty, too long or not whole samples are left out, as are those that are not read in time; their
/// samples count as lost, and one sample counts as lost when the publisher was away. A publisher
/// whose message does not end is disconnected.
///
/// Connects only, never binds, and reconnects as long as it lives.
class ZmqSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(ZmqSource)
public:
    static constexpr std::size_t maxMessageSize = 16 << 20; ///< bytes, of all parts

    /// Connects to a publisher, which need not be there yet.
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
    void connectToPublisher();
    bool take();
    void keep(zmq::message_t&& message);
    void note();
    std::optional<Message> state() const;
    void leaveOut(std::size_t size, const QString& why);

    // Members of the receiving thread. It takes every message at once, because only then the size
    // of an incomplete message is known.
    const QString m_endpoint;
    std::unique_ptr<Connection> m_connection; // null when it could not be made
    Clock::time_point m_lastUp;               // or when it was tried last
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
