// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/sources/ZmqSource.h"

#include <zmq.hpp>

namespace {

/// Who listens on a port of this machine: a publisher, or one who sends bytes without a protocol.
struct Peer
{
    explicit Peer(int type = ZMQ_PUB, const std::string& endpoint = "tcp://127.0.0.1:*")
        : socket(context, type)
    {
        socket.set(zmq::sockopt::linger, 0);
        socket.bind(endpoint);
    }
    /// tcp://127.0.0.1:PORT
    std::string endpoint() const { return socket.get(zmq::sockopt::last_endpoint); }
    Recording listen(const char* format) const
    {
        return openLive(QString::fromStdString(endpoint()).replace("tcp", "zmq"), format, 1000.0);
    }
    void send(std::size_t size, int flags = 0)
    {
        zmq_send(socket.handle(), std::string(size, '@').data(), size, flags);
    }
    /// Of a peer without a protocol: says something to whom has connected.
    void babble()
    {
        char id[5];
        if (zmq_recv(socket.handle(), id, sizeof id, ZMQ_DONTWAIT) == sizeof id) {
            zmq_send(socket.handle(), id, sizeof id, ZMQ_SNDMORE);
            send(1000);
        }
    }
    zmq::context_t context;
    zmq::socket_t socket;
};

class Zmq : public testing::Test
{
protected:
    std::unique_ptr<Peer> peer = std::make_unique<Peer>();
    std::vector<double> all;
};

TEST_F(Zmq, ReconnectsToAPublisherThatStallsAndGoesAway)
{
    const Recording recording = peer->listen("rs16");
    SignalSource& source = *recording.source;
    const std::string endpoint = peer->endpoint();
    readUntil(
        source, all, [&] { return all.size() >= 20; }, [&] { peer->send(20); });
    EXPECT_EQ(source.trouble(), "");
    readUntil(source, all, [&] { return says(source, "no samples for 1 s"); });
    peer.reset();
    readUntil(source, all, [&] { return says(source, "is gone: reconnecting"); });
    peer = std::make_unique<Peer>(ZMQ_PUB, endpoint);
    all.clear();
    readUntil(
        source, all, [&] { return all.size() >= 20; }, [&] { peer->send(20); });
    EXPECT_EQ(source.trouble(), "");
    EXPECT_THAT(all, testing::Each(0x4040 / 32768.0));
    EXPECT_EQ(source.lostBlockCount(), 0);
}

TEST_F(Zmq, LeavesOutMessagesThatAreNotSamplesAndSaysSo)
{
    const Recording recording = peer->listen("cf32");
    SignalSource& source = *recording.source;
    readUntil(
        source, all, [&] { return !all.empty(); }, [&] { peer->send(8); });
    for (const std::size_t size : {0, 13, 4, 16777224})
        peer->send(size);
    peer->send(5, ZMQ_SNDMORE); // is a topic
    peer->send(80);
    all.clear();
    readUntil(source, all, [&] { return all.size() % 20 == 0 && !all.empty(); });
    EXPECT_EQ(source.lostBlockCount(), 4);
    EXPECT_TRUE(says(source, "(4 left out, the last of 16777224 bytes)"));
}

TEST_F(Zmq, WaitsForAPublisherWhereThereIsNoneOrAStranger)
{
    peer = std::make_unique<Peer>(ZMQ_STREAM);
    const std::string endpoint = peer->endpoint();
    const Recording recording = peer->listen("rs16");
    SignalSource& source = *recording.source;
    readUntil(
        source, all, [&] { return says(source, "not a ZeroMQ publisher"); },
        [&] { peer->babble(); });
    peer.reset();
    readUntil(source, all, [&] { return says(source, "does not answer"); });
    peer = std::make_unique<Peer>(ZMQ_PUB, endpoint);
    // What the stranger said may count as bad messages for a while.
    all.clear();
    readUntil(
        source, all, [&] { return !all.empty() && source.trouble().isEmpty(); },
        [&] { peer->send(2); });
}

} // namespace
