// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// How fast live signals that nobody wants can be dropped, bytes a second of a writer that never
// waits for itself:
//   pipe   StreamSource, beside the read calls of a program that drops all, such as cat;
//   zmq    ZmqSource, beside the receive calls of a plain subscriber.
#include "workbench/sources/RecordingOpener.h"
#include "workbench/sources/StreamSource.h"

#include <benchmark/benchmark.h>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>
#include <zmq.hpp>

namespace {

constexpr std::size_t dropped = 64U << 20U; // bytes of an iteration
constexpr std::size_t pieceSize = 1U << 16U;
constexpr std::size_t blockLength = 16384; // samples, as the workbench drops them
constexpr double sampleRate = 1e9;

/// A process that does something until it goes.
class Writer
{
public:
    template<class Work>
    explicit Writer(Work work)
        : m_id(fork())
    {
        if (m_id == 0) {
            work();
            _exit(0);
        }
    }
    ~Writer()
    {
        kill(m_id, SIGKILL);
        waitpid(m_id, nullptr, 0);
    }

private:
    pid_t m_id;
};

struct Ends
{
    Ends()
    {
        if (pipe(ends) != 0)
            std::abort();
    }
    ~Ends()
    {
        close(ends[0]);
        close(ends[1]);
    }
    int ends[2] = {};
};

struct Pipe : Ends
{
    Writer writer{[this] {
        const std::vector<char> bytes(pieceSize, '@');
        while (write(ends[1], bytes.data(), bytes.size()) > 0) {
        }
    }};
};

struct Publisher
{
    int port = 20000 + getpid() % 20000;
    std::string endpoint() const { return "tcp://127.0.0.1:" + std::to_string(port); }
    Writer writer{[this] {
        zmq::context_t context;
        zmq::socket_t socket(context, ZMQ_PUB);
        socket.set(zmq::sockopt::xpub_nodrop, true); // waits for who receives
        socket.bind(endpoint());
        const std::vector<char> bytes(pieceSize, '@');
        for (;;)
            socket.send(zmq::buffer(bytes));
    }};
};

void drop(benchmark::State& state, SignalSource& source, std::size_t sampleSize)
{
    while (source.discard(blockLength) == 0) {
    }
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t count = 0; count < dropped;) // without what is lost before
            count += sampleSize * source.discard(blockLength);
    }
    state.SetBytesProcessed(state.iterations() * std::int64_t{dropped});
}

void pipeFloor(benchmark::State& state)
{
    const Pipe pipe;
    std::vector<char> bytes(128U << 10U); // as cat reads
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t count = 0; count < dropped;)
            count += static_cast<std::size_t>(read(pipe.ends[0], bytes.data(), bytes.size()));
    }
    state.SetBytesProcessed(state.iterations() * std::int64_t{dropped});
}

void pipeDropped(benchmark::State& state)
{
    const Pipe pipe;
    StreamSource source("pipe", pipe.ends[0], *SampleFormat::parse("cu8"), sampleRate);
    drop(state, source, 2);
}

void zmqFloor(benchmark::State& state)
{
    const Publisher publisher;
    zmq::context_t context;
    zmq::socket_t socket(context, ZMQ_SUB);
    socket.set(zmq::sockopt::subscribe, "");
    socket.connect(publisher.endpoint());
    zmq::message_t message;
    const auto receive = [&] { return socket.recv(message) ? message.size() : 0; };
    receive();
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t count = 0; count < dropped;)
            count += receive();
    }
    state.SetBytesProcessed(state.iterations() * std::int64_t{dropped});
}

void zmqDropped(benchmark::State& state)
{
    const Publisher publisher;
    Recording::Options options;
    options.format = SampleFormat::parse("cu8");
    options.sampleRate = 1e8;
    const Result<Recording> recording = RecordingOpener::open(
        QString::fromStdString(publisher.endpoint()).replace("tcp", "zmq"), options);
    drop(state, *recording->source, 2);
}

BENCHMARK(pipeFloor)->Name("drop of a pipe/floor")->UseRealTime();
BENCHMARK(pipeDropped)->Name("drop of a pipe/ours")->UseRealTime();
BENCHMARK(zmqFloor)->Name("drop of ZeroMQ/floor")->UseRealTime();
BENCHMARK(zmqDropped)->Name("drop of ZeroMQ/ours")->UseRealTime();

} // namespace

BENCHMARK_MAIN();
