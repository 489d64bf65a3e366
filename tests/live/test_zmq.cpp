// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/sources/ZmqSource.h"

#include <cstring>
#include <utility>

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
    /// Of a peer without a protocol: hears on, and remembers who has connected; false for nobody.
    bool hear()
    {
        char bytes[256];
        if (zmq_recv(socket.handle(), bytes, sizeof bytes, ZMQ_DONTWAIT) == sizeof id)
            std::memcpy(id, bytes, sizeof id);
        return id[0] || id[4];
    }
    void say(const std::string& bytes)
    {
        zmq_send(socket.handle(), id, sizeof id, ZMQ_SNDMORE | ZMQ_DONTWAIT);
        zmq_send(socket.handle(), bytes.data(), bytes.size(), ZMQ_DONTWAIT);
    }
    zmq::context_t context;
    zmq::socket_t socket;
    char id[5] = {};
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
    const std::size_t read = all.size();
    all.clear();
    readUntil(
        source, all, [&] { return all.size() >= 20; }, [&] { peer->send(20); });
    EXPECT_EQ(source.trouble(), "");
    EXPECT_THAT(all, testing::Each(0x4040 / 32768.0));
    EXPECT_EQ(source.position(), std::int64_t(read + all.size()) + 1) << "where it was away";
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
    const std::int64_t before = source.position();
    readUntil(source, all, [&] { return all.size() % 20 == 0 && !all.empty(); });
    // Those that are no whole sample count as one.
    EXPECT_EQ(source.position() - before - std::int64_t(all.size() / 2), 1 + 1 + 1 + 16777224 / 8);
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
        [&] {
            if (peer->hear())
                peer->say(std::string(1000, '@'));
        });
    peer.reset();
    readUntil(source, all, [&] { return says(source, "does not answer"); });
    peer = std::make_unique<Peer>(ZMQ_PUB, endpoint);
    // What the stranger said may count as bad messages for a while.
    all.clear();
    readUntil(
        source, all, [&] { return !all.empty() && source.trouble().isEmpty(); },
        [&] { peer->send(2); });
}

TEST_F(Zmq, LeavesAPublisherWhoseMessageDoesNotEnd)
{
    // The protocol as far as it takes: greeting, kind of socket, parts that say that more follow.
    const std::string greeting =
        "\xff" + std::string(8, '\0') + "\x7f\x03" + '\0' + "NULL" + std::string(48, '\0');
    const std::string ready = std::string("\x04\x19\x05READY\x0bSocket-Type\0\0\0\x03PUB", 27);
    const std::string part =
        std::string("\x03\0\0\0\0\0\x0f\x42\x40", 9) + std::string(1000000, '@');
    peer = std::make_unique<Peer>(ZMQ_STREAM);
    const std::string endpoint = peer->endpoint();
    const Recording recording = peer->listen("rs16");
    SignalSource& source = *recording.source;
    bool hasGreeted = false;
    readUntil(
        source, all, [&] { return says(source, "a message of more than 16777216 bytes"); },
        [&] {
            if (!peer->hear())
                return;
            peer->say(std::exchange(hasGreeted, true) ? part : greeting + ready);
        });
    EXPECT_TRUE(all.empty());
    peer.reset();
    peer = std::make_unique<Peer>(ZMQ_PUB, endpoint);
    readUntil(
        source, all, [&] { return !all.empty() && source.trouble().isEmpty(); },
        [&] { peer->send(2); });
}

} // namespace
