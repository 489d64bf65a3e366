// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Listens to a ZeroMQ publisher whose messages, in parts or whole, are or are not samples.
#include "Attack.h"
#include "workbench/sources/RecordingOpener.h"

#include <cerrno>
#include <string>

#include <zmq.hpp>

namespace {

constexpr std::size_t sampleSize = 4; // bytes of ci16

std::string anyBytes(Bytes& input, std::size_t most)
{
    std::string bytes(input.take<std::uint16_t>() % most, '\0');
    for (char& byte : bytes)
        byte = input.isEmpty() ? '\x7f' : input.take<char>();
    return bytes;
}

} // namespace

void attackPublisher(Bytes& input)
{
    zmq::context_t context;
    zmq::socket_t publisher(context, ZMQ_XPUB); // which hears of those who listen
    publisher.set(zmq::sockopt::linger, 0);
    publisher.bind("tcp://127.0.0.1:*");
    Recording::Options options;
    options.format = SampleFormat::parse(QStringLiteral("ci16"));
    options.sampleRate = 1e6;
    const auto endpoint = QString::fromStdString(publisher.get(zmq::sockopt::last_endpoint));
    const auto recording = RecordingOpener::open("zmq" + endpoint.mid(3), options);
    require(recording.has_value(), "a signal");
    SignalSource& source = *recording->source;
    zmq::message_t subscription;
    for (bool isHeard = false; !isHeard;) {
        try {
            isHeard = publisher.recv(subscription).has_value();
        } catch (const zmq::error_t& error) {
            require(error.num() == EINTR, "a listener"); // by the fuzzer's own clock
        }
    }
    std::string samples;
    std::int64_t bad = 0, leaps = 0; // messages; those before a good one are told by positions
    for (int message = 0; message < 50 && !input.isEmpty(); ++message) {
        for (unsigned parts = input.below(4); parts > 2; --parts)
            publisher.send(zmq::buffer(anyBytes(input, 300)), zmq::send_flags::sndmore);
        std::string body = anyBytes(input, input.below(16) == 1 ? 65000 : 300);
        if (input.below(4) > 0)
            body.resize(body.size() / sampleSize * sampleSize);
        const bool isGood = !body.empty() && body.size() % sampleSize == 0;
        bad += isGood ? 0 : 1;
        leaps = isGood ? bad : leaps;
        samples += isGood ? body : "";
        publisher.send(zmq::buffer(body), zmq::send_flags::none);
    }
    std::vector<double> all, block, truth(samples.size() / 2);
    constexpr int enough = 30000; // reads: where nothing is there, each takes a millisecond
    for (int k = 0; k < enough && all.size() < truth.size(); ++k) {
        source.read(block, 1000);
        all.insert(all.end(), block.begin(), block.end());
    }
    options.format->convert(samples.data(), truth.size(), truth.data());
    const std::int64_t lost = source.position() - static_cast<std::int64_t>(all.size() / 2);
    require(all == truth && lost >= leaps, "what was published");
    source.trouble();
}
