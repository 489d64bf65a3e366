// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Listens to a ZeroMQ publisher that sends anything: messages that are or are not samples, in parts
// or whole, or bytes that are no messages.
#include "Attack.h"
#include "workbench/sources/Recording.h"

#include <chrono>
#include <string>
#include <thread>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t sampleSize = 4; // bytes of ci16

/// Takes one connection on this machine, and sends bytes.
class Publisher
{
public:
    Publisher()
        : m_listening(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        require(bind(m_listening, any, size) == 0 && listen(m_listening, 1) == 0 &&
                    getsockname(m_listening, any, &size) == 0,
                "a port");
        m_port = ntohs(address.sin_port);
    }
    ~Publisher()
    {
        close(m_connection);
        close(m_listening);
    }
    QString address() const { return QStringLiteral("zmq://127.0.0.1:%1").arg(m_port); }
    void accept()
    {
        while (m_connection < 0) // a signal may end the wait
            m_connection = ::accept(m_listening, nullptr, nullptr);
    }
    void say(const std::string& bytes) const
    {
        for (std::size_t done = 0; done < bytes.size();) {
            const ssize_t count =
                send(m_connection, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
            if (count <= 0) // it was hung up
                return;
            done += static_cast<std::size_t>(count);
        }
    }
    /// Waits until all of a greeting has come: ZeroMQ takes no more than one before it greets.
    void hearGreeting() const
    {
        char byte = 0;
        for (ssize_t left = 64, count = 1; left > 0 && count != 0; left -= count > 0 ? count : 0)
            count = recv(m_connection, &byte, 1, 0);
    }

private:
    int m_listening;
    int m_connection = -1;
    int m_port = 0;
};

const std::string greeting =
    "\xff" + std::string(8, '\0') + "\x7f\x03" + '\0' + "NULL" + std::string(48, '\0');
const std::string ready("\x04\x19\x05READY\x0bSocket-Type\0\0\0\x03PUB", 27);

std::string part(const std::string& body, bool isMore)
{
    std::string head(1, static_cast<char>(2 + (isMore ? 1 : 0)));
    for (int shift = 56; shift >= 0; shift -= 8)
        head += static_cast<char>(std::uint64_t{body.size()} >> shift);
    return head + body;
}

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
    Publisher publisher;
    Recording::Options options;
    options.format = SampleFormat::parse(QStringLiteral("ci16"));
    options.sampleRate = 1e6;
    const Recording recording = Recording::open(publisher.address(), options);
    require(recording.source != nullptr, "a signal");
    SignalSource& source = *recording.source;
    publisher.accept();
    const bool isWhole = input.below(8) != 1;
    std::string sent = ready, samples;
    std::int64_t bad = 0, leaps = 0; // messages; those before a good one are told by positions
    for (int message = 0; message < 50 && !input.isEmpty(); ++message) {
        for (unsigned parts = input.below(4); parts > 2; --parts)
            sent += part(anyBytes(input, 300), true);
        std::string body = anyBytes(input, input.below(16) == 1 ? 65000 : 300);
        if (input.below(4) > 0)
            body.resize(body.size() / sampleSize * sampleSize);
        const bool isGood = !body.empty() && body.size() % sampleSize == 0;
        bad += isGood ? 0 : 1;
        leaps = isGood ? bad : leaps;
        samples += isGood ? body : "";
        sent += part(body, false);
    }
    publisher.say(isWhole ? greeting : (greeting + ready).substr(0, input.below(100)));
    if (isWhole)
        publisher.hearGreeting();
    publisher.say(isWhole ? sent : anyBytes(input, 300));
    std::vector<double> all, block;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(30);
    const std::size_t count = samples.size() / 2;
    while (isWhole && Clock::now() < end && all.size() < count) {
        source.read(block, 1000);
        all.insert(all.end(), block.begin(), block.end());
        block.clear();
    }
    std::vector<double> truth(count);
    options.format->convert(samples.data(), count, truth.data());
    const std::int64_t lost = source.position() - static_cast<std::int64_t>(all.size() / 2);
    require(!isWhole || (all == truth && lost >= leaps), "what was published");
    publisher.say(anyBytes(input, 300));
    source.trouble();
}
