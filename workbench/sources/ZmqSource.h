// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"

#include <memory>

/// Samples that a ZeroMQ publisher sends, each message some whole samples and nothing else. The
/// source connects to the publisher, and again when it was gone; it binds to nothing.
class ZmqSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(ZmqSource)
public:
    /// Largest message that counts as samples, bytes.
    static constexpr std::int64_t maxMessageSize = 64 << 20;

    /// Connects, and says in the recording what came of it; the publisher need not be there yet.
    /// @param address  zmq://HOST:PORT
    /// @param options  with format and sample rate.
    static void open(Recording& recording, const QString& address,
                     const Recording::Options& options);
    ~ZmqSource() override;

private:
    struct Connection;
    ZmqSource(const QString& host, int port, const Recording::Options& options);

    void receive(std::vector<char>& bytes, std::size_t most) override;
    QString peer() const override { return m_peer; }
    void followConnection();

    QString m_peer;
    std::unique_ptr<Connection> m_connection;
    std::int64_t m_garbageCount = 0;
};
