// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/sources/StreamSource.h"

#include <gmock/gmock.h>

#include <cstring>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

struct Pipe
{
    Pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~Pipe()
    {
        close(ends[0]);
        closeWriter();
    }
    void write(const void* bytes, std::size_t count) const
    {
        EXPECT_EQ(::write(ends[1], bytes, count), static_cast<ssize_t>(count));
    }
    void closeWriter() { close(std::exchange(ends[1], -1)); }
    int ends[2] = {-1, -1};
};

StreamSource sourceOf(int descriptor, const char* format)
{
    return StreamSource("pipe", descriptor, *SampleFormat::parse(format), 1e6);
}

TEST(Stream, ComesThroughHoweverItIsCutIntoPieces)
{
    Pipe pipe;
    std::vector<float> sent(200001); // whole I/Q pairs, and half of one
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = static_cast<float>(i);
    std::thread writer([&] {
        const auto* bytes = reinterpret_cast<const char*>(sent.data());
        const std::size_t all = sent.size() * sizeof(float);
        std::size_t step = 1;
        for (std::size_t done = 0; done < all; done += step) {
            step = std::min(all - done, step < 70000 ? step * 3 : 1);
            pipe.write(bytes + done, step);
        }
        pipe.closeWriter();
    });
    StreamSource source = sourceOf(pipe.ends[0], "cf32");
    std::vector<double> all;
    readUntil(source, all, [&] { return source.hasEnded(); });
    writer.join();
    sent.pop_back();
    EXPECT_TRUE(std::equal(all.begin(), all.end(), sent.begin(), sent.end()));
    EXPECT_EQ(source.position(), 100000);
    EXPECT_TRUE(says(source, "within a sample (bytes left out: 4)"));
}

TEST(Stream, TellsASilenceWhileItLasts)
{
    Pipe pipe;
    StreamSource source = sourceOf(pipe.ends[0], "rs16");
    std::vector<double> all;
    pipe.write("\1", 1); // is no sample yet
    readUntil(source, all, [&] { return says(source, "no samples"); });
    EXPECT_FALSE(source.hasEnded());
    pipe.write("\0\0\100", 3);
    readUntil(source, all, [&] { return all.size() == 2; });
    EXPECT_THAT(all, testing::ElementsAre(1.0 / 32768, 0.5));
    EXPECT_EQ(source.trouble(), "");
    pipe.closeWriter();
    readUntil(source, all, [&] { return source.hasEnded(); });
    EXPECT_EQ(source.trouble(), "it has ended");
}

TEST(Stream, ThatCannotBeReadEndsAndSaysWhy)
{
    const int folder = open("/", O_RDONLY);
    const int nothing = open("/dev/null", O_RDONLY);
    const std::pair<int, const char*> rows[] = {
        {9999, "cannot be read"}, {folder, "cannot be read"}, {nothing, "before a sample came"}};
    for (const auto& [descriptor, text] : rows) {
        StreamSource source = sourceOf(descriptor, "cu8");
        std::vector<double> all;
        readUntil(source, all, [&] { return source.hasEnded(); });
        EXPECT_TRUE(says(source, text)) << qPrintable(source.trouble());
    }
    close(folder);
    close(nothing);
}

TEST(LiveAddresses, ThatCannotBeOpenedSayWhatToDo)
{
    const std::tuple<const char*, const char*, std::optional<double>, const char*> rows[] = {
        {"-", "", 1e6, "give --format and --sample-rate"},
        {"-", "cf32", std::nullopt, "give --format and --sample-rate"},
        {"zmq://127.0.0.1:5555", "cf32", std::nullopt, "--sample-rate"},
        {"zmq://", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://127.0.0.1", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://127.0.0.1:0", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://127.0.0.1:99999", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://127.0.0.1:5555/topic", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://*:5555", "cf32", 1e6, ""},
        {"zmq://no.such.host.invalid:5555", "cf32", 1e6, "check the name"},
        {"soapy://driver=null", "cf32", 1e6, "leave out --format"},
        {"udp://127.0.0.1:5555", "cf32", 1e6, "give zmq://HOST:PORT"},
    };
    for (const auto& [address, format, sampleRate, advice] : rows) {
        SCOPED_TRACE(address);
        const Recording recording = openLive(address, format, sampleRate);
        EXPECT_FALSE(recording.source);
        EXPECT_THAT(recording.why.toStdString(), testing::HasSubstr(advice));
        EXPECT_FALSE(recording.why.isEmpty());
    }
}

} // namespace
