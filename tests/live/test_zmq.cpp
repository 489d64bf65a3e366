// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"

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
    std::string endpoint() const { return socket.get(zmq::sockopt::last_endpoint); }
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

class Zmq : public Live
{
protected:
    void listen(const char* format)
    {
        endpoint = peer->endpoint();
        source = openLive(QString::fromStdString(endpoint).replace("tcp", "zmq"), format, 1000.0)
                     .value()
                     .source;
    }
    /// The old one goes first.
    void publishAnew()
    {
        peer.reset();
        peer = std::make_unique<Peer>(ZMQ_PUB, endpoint);
        all.clear();
    }
    std::unique_ptr<Peer> peer = std::make_unique<Peer>();
    std::string endpoint; // tcp://127.0.0.1:PORT
};

TEST_F(Zmq, ReconnectsToAPublisherThatStallsAndGoesAway)
{
    listen("rs16");
    const auto isPlaying = [&] { return all.size() >= 20; };
    const auto publish = [&] { peer->send(20); };
    readUntil(isPlaying, publish);
    EXPECT_EQ(trouble(), "");
    readUntil([&] { return says("no samples for 1 s"); });
    peer.reset();
    readUntil([&] { return says("is gone: reconnecting"); });
    const std::size_t read = all.size();
    publishAnew();
    readUntil(isPlaying, publish);
    EXPECT_EQ(trouble(), "");
    EXPECT_THAT(all, testing::Each(0x4040 / 32768.0));
    EXPECT_EQ(source->position(), std::int64_t(read + all.size()) + 1) << "where it was away";
}

TEST_F(Zmq, LeavesOutMessagesThatAreNotSamplesAndSaysSo)
{
    listen("cf32");
    readUntil([&] { return !all.empty(); }, [&] { peer->send(8); });
    for (const std::size_t size : {0, 13, 4, 16777224})
        peer->send(size);
    peer->send(5, ZMQ_SNDMORE); // is a topic
    peer->send(80);
    all.clear();
    const std::int64_t before = source->position();
    readUntil([&] { return all.size() % 20 == 0 && !all.empty(); });
    // Those that are no whole sample count as one.
    EXPECT_EQ(source->position() - before - std::int64_t(all.size() / 2), 1 + 1 + 1 + 16777224 / 8);
    EXPECT_TRUE(says("(4 left out, the last of 16777224 bytes)"));
}

TEST_F(Zmq, WaitsForAPublisherWhereThereIsNoneOrAStranger)
{
    peer = std::make_unique<Peer>(ZMQ_STREAM);
    listen("rs16");
    const auto babble = [&] {
        if (peer->hear())
            peer->say(std::string(1000, '@'));
    };
    readUntil([&] { return says("not a ZeroMQ publisher"); }, babble);
    peer.reset();
    readUntil([&] { return says("does not answer"); });
    publishAnew();
    // What the stranger said may count as bad messages for a while.
    readUntil([&] { return !all.empty() && trouble().isEmpty(); }, [&] { peer->send(2); });
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
    listen("rs16");
    bool hasGreeted = false;
    const auto goOn = [&] {
        if (peer->hear())
            peer->say(std::exchange(hasGreeted, true) ? part : greeting + ready);
    };
    readUntil([&] { return says("a message of more than 16777216 bytes"); }, goOn);
    EXPECT_TRUE(all.empty());
    publishAnew();
    readUntil([&] { return !all.empty() && trouble().isEmpty(); }, [&] { peer->send(2); });
}

} // namespace
