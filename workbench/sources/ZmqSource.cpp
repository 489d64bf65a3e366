// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ZmqSource.h"

#include <QUrl>

#include <cstring>

#include <zmq.hpp>

namespace {

constexpr int maxWaiting = 256; // messages
constexpr int reconnectMs = 100;
constexpr int maxReconnectMs = 2000;
constexpr const char* monitorAddress = "inproc://monitor";

} // namespace

struct ZmqSource::Connection
{
    Connection()
        : socket(context, zmq::socket_type::sub)
        , monitor(context, zmq::socket_type::pair)
    {
        socket.set(zmq::sockopt::linger, 0);
        socket.set(zmq::sockopt::rcvhwm, maxWaiting);
        socket.set(zmq::sockopt::maxmsgsize, maxMessageSize);
        socket.set(zmq::sockopt::reconnect_ivl, reconnectMs);
        socket.set(zmq::sockopt::reconnect_ivl_max, maxReconnectMs);
        socket.set(zmq::sockopt::subscribe, "");
        zmq_socket_monitor(socket.handle(), monitorAddress,
                           ZMQ_EVENT_HANDSHAKE_SUCCEEDED | ZMQ_EVENT_DISCONNECTED);
        monitor.set(zmq::sockopt::linger, 0);
        monitor.connect(monitorAddress);
    }

    zmq::context_t context{1};
    zmq::socket_t socket;
    zmq::socket_t monitor;
};

void ZmqSource::open(Recording& recording, const QString& address,
                     const Recording::Options& options)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || url.port() <= 0 || url.path().size() > 1) {
        recording.why = tr("this is no address of a publisher; give zmq://HOST:PORT");
        return;
    }
    try {
        recording.source.reset(new ZmqSource(url.host(), url.port(), options));
    } catch (const zmq::error_t& error) {
        recording.why = tr("cannot be subscribed to (%1); check the address").arg(error.what());
    }
}

ZmqSource::ZmqSource(const QString& host, int port, const Recording::Options& options)
    : LiveSource(QStringLiteral("zmq://%1:%2").arg(host).arg(port), *options.format,
                 *options.sampleRate)
    , m_peer(QStringLiteral("%1:%2").arg(host).arg(port))
    , m_connection(std::make_unique<Connection>())
{
    const QString bracketed =
        host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]").arg(host) : host;
    m_connection->socket.connect(
        QStringLiteral("tcp://%1:%2").arg(bracketed).arg(port).toStdString());
}

ZmqSource::~ZmqSource() = default;

void ZmqSource::receive(std::vector<char>& bytes, std::size_t)
{
    zmq::pollitem_t items[] = {{m_connection->socket.handle(), 0, ZMQ_POLLIN, 0},
                               {m_connection->monitor.handle(), 0, ZMQ_POLLIN, 0}};
    try {
        zmq::poll(items, 2, patience);
        if ((items[1].revents & ZMQ_POLLIN) != 0)
            followConnection();
        zmq::message_t message;
        if ((items[0].revents & ZMQ_POLLIN) == 0 ||
            !m_connection->socket.recv(message, zmq::recv_flags::dontwait))
            return;
        if (message.size() > 0 && message.size() % sampleSize() == 0 && !message.more()) {
            const char* data = message.data<char>();
            bytes.insert(bytes.end(), data, data + message.size());
            if (m_garbageCount > 0)
                setTrouble(QString());
            m_garbageCount = 0;
            return;
        }
        while (message.more() && m_connection->socket.recv(message, zmq::recv_flags::dontwait)) {
        }
        ++m_garbageCount;
        countLost(1);
        setTrouble(tr("%1 sends messages that are not whole samples; check --format").arg(m_peer));
    } catch (const zmq::error_t& error) {
        if (error.num() != EINTR) {
            end();
            setTrouble(tr("%1 cannot be listened to any more (%2)").arg(m_peer, error.what()));
        }
    }
}

void ZmqSource::followConnection()
{
    zmq::message_t event;
    zmq::message_t address;
    if (!m_connection->monitor.recv(event, zmq::recv_flags::dontwait))
        return;
    if (event.more() && !m_connection->monitor.recv(address, zmq::recv_flags::none))
        return;
    std::uint16_t number = 0;
    if (event.size() >= sizeof number)
        std::memcpy(&number, event.data(), sizeof number);
    setTrouble(number == ZMQ_EVENT_DISCONNECTED ? tr("%1 is gone; reconnecting").arg(m_peer)
                                                : QString());
}
