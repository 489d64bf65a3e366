// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"
#include "workbench/sources/Recording.h"

#include <memory>

/// What a ZeroMQ publisher sends: each message some samples of one format, without a header. Of a
/// message in parts, as it comes with a topic, the last part. Messages that are empty, absurdly
/// long or not whole samples are left out and counted.
///
/// Connects to where it is told, binds nothing, and connects again for as long as it lives.
class ZmqSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(ZmqSource)
public:
    static constexpr std::size_t maxMessageSize = 16 << 20; ///< bytes

    /// Connects, and says in the recording what came of it. The publisher need not be there yet.
    /// @param address  zmq://HOST:PORT
    static void open(Recording& recording, const QString& address, const SampleFormat& format,
                     double sampleRate);
    ~ZmqSource() override;

protected:
    bool receive(std::vector<char>& bytes) override;
    QString amiss() const override;

private:
    class Connection;

    ZmqSource(const QString& address, const QString& endpoint, const SampleFormat& format,
              double sampleRate);
    void connect();
    void take(std::vector<char>& bytes);
    void leaveOut(std::size_t size);

    const QString m_endpoint;
    std::unique_ptr<Connection> m_connection; // null where there could be none
    Clock::time_point m_lastUp;               // or tried
    bool m_wasUp = false;
    bool m_metStranger = false;
    Clock::time_point m_lastBad; // message that was left out...
    QString m_bad;               // ...and why, empty for none
};
