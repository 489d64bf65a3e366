// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/sources/ZmqSource.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>
#include <zmq.hpp>

namespace {

/// A publisher on this machine. Without linger: what was not sent when it goes away is lost.
struct Publisher
{
    explicit Publisher(int port = 0)
        : socket(context, ZMQ_PUB)
    {
        socket.set(zmq::sockopt::linger, 0);
        socket.bind("tcp://127.0.0.1:" + (port ? std::to_string(port) : "*"));
    }
    int port() const
    {
        const std::string endpoint = socket.get(zmq::sockopt::last_endpoint);
        return std::stoi(endpoint.substr(endpoint.rfind(':') + 1));
    }
    void send(std::size_t size, zmq::send_flags flags = zmq::send_flags::none)
    {
        zmq::message_t message(size);
        std::memset(message.data(), 0x40, size);
        socket.send(message, flags);
    }
    zmq::context_t context;
    zmq::socket_t socket;
};

/// Takes connections on a port and answers with bytes that mean nothing to ZeroMQ.
struct Stranger
{
    Stranger()
        : listener(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0))
    {
        const int yes = 1;
        setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listener, 8), 0);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
    }
    ~Stranger()
    {
        close(connection);
        close(listener);
    }
    void step()
    {
        const int next = accept(listener, nullptr, nullptr);
        if (next < 0)
            return;
        close(std::exchange(connection, next));
        const std::string text(1000, 'x');
        send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    }
    int listener;
    int connection = -1;
    int port = 0;
};

QString addressOf(int port) { return QStringLiteral("zmq://127.0.0.1:%1").arg(port); }

TEST(Zmq, ReconnectsToAPublisherThatStallsAndGoesAway)
{
    auto publisher = std::make_unique<Publisher>();
    const int port = publisher->port();
    const Recording recording = openLive(addressOf(port), "rs16");
    ASSERT_TRUE(recording.source) << qPrintable(recording.why);
    SignalSource& source = *recording.source;
    std::vector<double> all;
    const auto publish = [&] { publisher->send(20); };

    EXPECT_TRUE(readUntil(
        source, all, [&] { return all.size() >= 20; }, publish));
    EXPECT_EQ(source.trouble(), "");
    readUntil(source, all, [&] { return says(source, "no samples for 1 s"); });
    publisher.reset();
    readUntil(source, all, [&] { return says(source, "is gone: reconnecting"); });
    publisher = std::make_unique<Publisher>(port);
    all.clear();
    EXPECT_TRUE(readUntil(
        source, all, [&] { return all.size() >= 20; }, publish));
    EXPECT_EQ(source.trouble(), "");
    EXPECT_THAT(all, testing::Each(0x4040 / 32768.0));
    EXPECT_EQ(source.lostBlockCount(), 0);
    EXPECT_FALSE(source.hasEnded());
}

TEST(Zmq, LeavesOutMessagesThatAreNotSamplesAndSaysSo)
{
    Publisher publisher;
    const Recording recording = openLive(addressOf(publisher.port()), "cf32");
    ASSERT_TRUE(recording.source) << qPrintable(recording.why);
    SignalSource& source = *recording.source;
    std::vector<double> all;
    readUntil(
        source, all, [&] { return !all.empty(); }, [&] { publisher.send(8); });
    // Last comes a good one, of ten samples, with a topic that is none.
    for (const std::size_t size :
         {std::size_t(0), std::size_t(13), std::size_t(4), ZmqSource::maxMessageSize + 8})
        publisher.send(size);
    publisher.send(5, zmq::send_flags::sndmore);
    publisher.send(80);
    all.clear();
    EXPECT_TRUE(readUntil(source, all, [&] { return source.lostBlockCount() == 4; }));
    EXPECT_TRUE(says(source, "(4 left out, the last of 16777224 bytes)"));
    EXPECT_TRUE(readUntil(source, all, [&] { return all.size() % 20 == 0 && !all.empty(); }));
    EXPECT_EQ(source.lostBlockCount(), 4);
}

TEST(Zmq, WaitsForAPublisherWhereThereIsNoneOrAStranger)
{
    std::vector<double> all;
    auto stranger = std::make_unique<Stranger>();
    const int port = stranger->port;
    const Recording recording = openLive(addressOf(port));
    ASSERT_TRUE(recording.source) << qPrintable(recording.why);
    SignalSource& source = *recording.source;
    readUntil(
        source, all, [&] { return says(source, "not a ZeroMQ publisher"); },
        [&] { stranger->step(); });
    stranger.reset();
    readUntil(source, all, [&] { return says(source, "does not answer"); });
    Publisher publisher(port);
    // What the stranger said may count as bad messages for a while.
    all.clear();
    EXPECT_TRUE(readUntil(
        source, all, [&] { return !all.empty() && source.trouble().isEmpty(); },
        [&] { publisher.send(2); }));
}

} // namespace
