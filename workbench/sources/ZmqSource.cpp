// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ZmqSource.h"

#include "platform/values/Handover.h"
#include "workbench/sources/PlainText.h"

#include <QUrl>

#include <algorithm>
#include <utility>

#include <linux/tcp.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <zmq.hpp>

namespace {

constexpr std::chrono::seconds retryPeriod{3};
constexpr std::chrono::seconds badNewsPeriod{3}; // how long a message that was left out is reported
constexpr std::chrono::milliseconds pollPeriod{20};
constexpr int highWaterMark = 16; // messages that wait in ZeroMQ
constexpr std::int64_t longestTakenIn = 2 * ZmqSource::maxMessageSize; // of a part, bytes
// Largest incomplete message, with what may have come of the next one. ZeroMQ takes up to 32 times
// as much memory when its parts are empty.
constexpr std::int64_t maxUnfinishedSize = ZmqSource::maxMessageSize + (1 << 20);
constexpr std::size_t fullSize = 2 * ZmqSource::maxMessageSize; // of messages that wait, bytes

/// Address of a host in the notation of ZeroMQ; empty when the host is not known. IPv4 where there
/// is a choice: most publishers listen there only. If ZeroMQ looked the name up, closing the
/// connection would have to wait for that.
QString endpointOf(const QString& host, int port)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.toUtf8().constData(), nullptr, &hints, &found) != 0 || !found)
        return QString();
    const addrinfo* best = found;
    for (const addrinfo* other = found; other; other = other->ai_next) {
        if (other->ai_family == AF_INET && best->ai_family != AF_INET)
            best = other;
    }
    char numeric[NI_MAXHOST] = "";
    getnameinfo(best->ai_addr, best->ai_addrlen, numeric, sizeof numeric, nullptr, 0,
                NI_NUMERICHOST);
    const QString pattern =
        QLatin1String(best->ai_family == AF_INET ? "tcp://%1:%2" : "tcp://[%1]:%2");
    freeaddrinfo(found);
    return numeric[0] ? pattern.arg(QString::fromLatin1(numeric)).arg(port) : QString();
}

} // namespace

/// Messages on their way to the thread that reads.
struct ZmqSource::Inbox
{
    struct Piece
    {
        std::int64_t lostBefore; // samples
        zmq::message_t message;
    };

    Inbox() { queue.setLimit(fullSize); }

    values::Handover<Piece> queue;
    std::optional<Piece> next; // of the thread that reads: the first one of the next call
};

/// A socket that subscribes to everything, with a monitor of its connection.
class ZmqSource::Connection
{
public:
    explicit Connection(const QString& endpoint)
        : m_socket(m_context, ZMQ_SUB)
    {
        set(ZMQ_LINGER, 0);
        set(ZMQ_RCVHWM, highWaterMark);
        set(ZMQ_IPV6, endpoint.contains(QLatin1Char('[')) ? 1 : 0);
        // Notices a peer whose cable was pulled, or that accepts the connection and sends nothing.
        set(ZMQ_TCP_KEEPALIVE, 1);
        set(ZMQ_TCP_KEEPALIVE_IDLE, 5);
        set(ZMQ_TCP_KEEPALIVE_INTVL, 2);
        set(ZMQ_TCP_KEEPALIVE_CNT, 3);
        set(ZMQ_HANDSHAKE_IVL, 2000);
        zmq_setsockopt(m_socket.handle(), ZMQ_MAXMSGSIZE, &longestTakenIn, sizeof longestTakenIn);
        zmq_setsockopt(m_socket.handle(), ZMQ_SUBSCRIBE, "", 0);
        m_monitor.init(m_socket, "inproc://monitor");
        m_socket.connect(endpoint.toStdString());
    }

    /// Waits for a message, and handles events of the connection.
    void await(std::chrono::milliseconds time)
    {
        zmq::pollitem_t item{m_socket.handle(), 0, ZMQ_POLLIN, 0};
        zmq::poll(&item, 1, time);
        while (m_monitor.check_event(0)) {
        }
    }
    /// @return false for none.
    bool receive(zmq::message_t& message)
    {
        const bool isThere = m_socket.recv(message, zmq::recv_flags::dontwait).has_value();
        if (isThere)
            m_byteCount = byteCount();
        return isThere;
    }
    bool isUp() const { return m_monitor.isUp; }
    /// Whether the peer is not a publisher.
    bool isStrange() const { return m_monitor.isStrange; }
    /// Whether the peer has accepted the connection but does not speak the protocol.
    bool isUnanswered() const { return m_monitor.descriptor >= 0 && !m_monitor.isUp; }
    /// Number of bytes received from the peer, overhead included; 0 when that is not known.
    std::int64_t byteCount() const
    {
        tcp_info info{};
        socklen_t size = sizeof info;
        if (m_monitor.descriptor < 0 ||
            getsockopt(m_monitor.descriptor, IPPROTO_TCP, TCP_INFO, &info, &size) != 0 ||
            size < offsetof(tcp_info, tcpi_bytes_received) + sizeof info.tcpi_bytes_received)
            return 0;
        return static_cast<std::int64_t>(info.tcpi_bytes_received);
    }
    /// Whether more bytes have come since the last message than one may have.
    bool isFlooded() const { return byteCount() - m_byteCount > maxUnfinishedSize; }

private:
    struct Monitor : zmq::monitor_t
    {
        void on_event_handshake_succeeded(const zmq_event_t&, const char*) override
        {
            isUp = true;
            isStrange = false;
        }
        void on_event_connected(const zmq_event_t& event, const char*) override
        {
            descriptor = event.value;
        }
        void on_event_disconnected(const zmq_event_t&, const char*) override
        {
            descriptor = -1;
            isUp = false;
        }
        void on_event_handshake_failed_no_detail(const zmq_event_t&, const char*) override
        {
            isStrange = true;
        }
        void on_event_handshake_failed_protocol(const zmq_event_t&, const char*) override
        {
            isStrange = true;
        }
        int descriptor = -1; // of the connection; ZeroMQ owns it
        bool isUp = false;
        bool isStrange = false;
    };

    void set(int option, int value)
    {
        zmq_setsockopt(m_socket.handle(), option, &value, sizeof value);
    }

    zmq::context_t m_context;
    zmq::socket_t m_socket;
    Monitor m_monitor;
    std::int64_t m_byteCount = 0; // when the last message was taken
};

Result<Recording> ZmqSource::open(const QString& address, const SampleFormat& format,
                                  double sampleRate)
{
    const QUrl url(address, QUrl::StrictMode);
    const bool isPlain = url.userInfo().isEmpty() && !url.hasQuery() && !url.hasFragment() &&
                         (url.path().isEmpty() || url.path() == QLatin1String("/"));
    if (!url.isValid() || url.host().isEmpty() || url.port() < 1 || !isPlain)
        return failure(tr("this is not the address of a publisher; give one such as "
                          "zmq://127.0.0.1:5555"));
    const QString endpoint = endpointOf(url.host(), url.port());
    if (endpoint.isEmpty())
        return failure(tr("the host %1 is not known; check the name").arg(plainText(url.host())));
    try {
        std::unique_ptr<ZmqSource> source(new ZmqSource(address, endpoint, format, sampleRate));
        source->connectToPublisher();
        source->m_thread = std::thread([zmq = source.get()] { zmq->run(); });
        Recording recording;
        recording.source = std::move(source);
        return recording;
    } catch (const zmq::error_t& error) {
        return failure(tr("cannot be connected to (%1); check the address")
                           .arg(QString::fromLocal8Bit(error.what())));
    }
}

ZmqSource::ZmqSource(const QString& address, const QString& endpoint, const SampleFormat& format,
                     double sampleRate)
    : LiveSource(address, format, sampleRate)
    , m_endpoint(endpoint)
    , m_inbox(std::make_unique<Inbox>())
{}

ZmqSource::~ZmqSource()
{
    m_isStopping = true;
    if (m_thread.joinable())
        m_thread.join();
}

void ZmqSource::connectToPublisher()
{
    m_lastUp = Clock::now();
    // Not every version of ZeroMQ reports a handshake that fails.
    m_metStranger = m_connection && m_connection->isUnanswered();
    m_connection.reset();
    m_connection = std::make_unique<Connection>(m_endpoint);
}

void ZmqSource::run()
{
    while (!m_isStopping) {
        try {
            // ZeroMQ does not try again when the peer did not speak its protocol.
            if (Clock::now() - m_lastUp > retryPeriod)
                connectToPublisher();
            if (m_connection)
                m_connection->await(pollPeriod);
            else
                std::this_thread::sleep_for(pollPeriod);
            if (m_connection && !take() && m_connection->isFlooded()) {
                leaveOut(maxMessageSize,
                         tr("the publisher sends a message of more than %1 bytes: connecting again")
                             .arg(maxMessageSize));
                m_connection.reset();
                m_lastUp = Clock::now();
            }
        } catch (const zmq::error_t&) {
            // A signal came, or there is no room for a connection: the next turn tries again.
        }
        note();
    }
}

/// Takes the messages that have come; false when there were none.
bool ZmqSource::take()
{
    constexpr int most = 1000; // messages, before other work is done
    int count = 0;
    for (; count < most; ++count) {
        zmq::message_t message;
        if (!m_connection->receive(message))
            break;
        const std::size_t size = message.size();
        if (message.more())
            continue;
        if (size == 0 || size > maxMessageSize || size % sampleSize() != 0)
            leaveOut(size,
                     tr("messages are not whole samples of %1 (%2 left out, the last of %3 bytes); "
                        "check the format, and that no tags are sent")
                         .arg(format().name())
                         .arg(m_badCount + 1)
                         .arg(size));
        else
            keep(std::move(message));
    }
    return count > 0;
}

/// Keeps a message for the thread that reads, without copying it: that thread may have little time.
void ZmqSource::keep(zmq::message_t&& message)
{
    const std::size_t size = message.size();
    if (m_inbox->queue.tryPush({m_lost, std::move(message)}, size + sizeof(Inbox::Piece)))
        m_lost = 0;
    else
        m_lost += static_cast<std::int64_t>(size / sampleSize());
}

/// Updates the state of the connection.
void ZmqSource::note()
{
    const bool isUp = m_connection && m_connection->isUp();
    if (isUp) {
        if (m_wasUp && !m_isUp) // for an unknown time
            m_lost = std::max<std::int64_t>(m_lost, 1);
        m_lastUp = Clock::now();
        m_wasUp = true;
        m_metStranger = false;
    } else if (m_connection && m_connection->isStrange()) {
        m_metStranger = true;
    }
    m_isUp = isUp;
    m_link.say(state());
}

/// Trouble with the connection, as far as the receiving thread knows.
std::optional<Message> ZmqSource::state() const
{
    if (m_bad && Clock::now() - m_lastBad < badNewsPeriod)
        return m_bad;
    if (!m_isUp && m_metStranger)
        return tr("who answers is not a ZeroMQ publisher: trying again");
    if (!m_isUp && m_wasUp)
        return tr("the publisher is gone: reconnecting");
    return std::nullopt;
}

void ZmqSource::leaveOut(std::size_t size, const QString& why)
{
    ++m_badCount;
    m_lost += std::max<std::int64_t>(static_cast<std::int64_t>(size / sampleSize()), 1);
    m_lastBad = Clock::now();
    m_bad = why;
}

bool ZmqSource::receive(std::vector<char>& bytes)
{
    std::optional<Inbox::Piece>& next = m_inbox->next;
    if (!next)
        next = m_inbox->queue.pop(timeout);
    if (!next)
        return true;
    if (next->lostBefore > 0)
        leap(next->lostBefore);
    const std::size_t enough = bytes.size() + pieceSize;
    do {
        const zmq::message_t& message = next->message;
        bytes.insert(bytes.end(), message.data<char>(), message.data<char>() + message.size());
        next = m_inbox->queue.pop(std::chrono::milliseconds(0));
    } while (next && next->lostBefore == 0 && bytes.size() < enough);
    return true;
}

std::optional<Message> ZmqSource::amiss() const
{
    if (const auto trouble = m_link.message())
        return trouble;
    if (m_isUp)
        return LiveSource::amiss();
    if (silentSeconds() > 0)
        return tr("the publisher does not answer: trying again");
    return std::nullopt;
}
