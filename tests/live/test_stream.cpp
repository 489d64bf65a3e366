// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/sources/StreamSource.h"

#include <algorithm>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

class Stream : public testing::Test
{
protected:
    Stream() { EXPECT_EQ(pipe(ends), 0); }
    ~Stream() override { close(ends[0]); }
    void write(const char* bytes, std::size_t count) const
    {
        EXPECT_EQ(::write(ends[1], bytes, count), static_cast<ssize_t>(count));
    }
    static StreamSource open(int descriptor, const char* format)
    {
        return StreamSource("pipe", descriptor, *SampleFormat::parse(format), 1e6);
    }
    int ends[2];
    std::vector<double> all;
};

TEST_F(Stream, ComesThroughHoweverItIsCutIntoPieces)
{
    std::vector<float> sent(200001); // whole I/Q pairs, and half of one
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = static_cast<float>(i);
    std::thread writer([&] {
        const std::size_t end = sent.size() * sizeof(float);
        std::size_t step = 1;
        for (std::size_t done = 0; done < end; done += step) {
            step = std::min(end - done, step < 70000 ? step * 3 : 1);
            write(reinterpret_cast<const char*>(sent.data()) + done, step);
        }
        close(ends[1]);
    });
    StreamSource source = open(ends[0], "cf32");
    while (source.position() < 5000)
        source.discard(5000 - std::size_t(source.position()));
    readUntil(source, all, [&] { return source.hasEnded(); });
    writer.join();
    sent.pop_back();
    EXPECT_TRUE(std::equal(all.begin(), all.end(), sent.begin() + 10000, sent.end()));
    EXPECT_TRUE(says(source, "within a sample (bytes left out: 4)"));
}

TEST_F(Stream, TellsASilenceWhileItLasts)
{
    StreamSource source = open(ends[0], "rs16");
    write("\1", 1); // is no sample yet
    readUntil(source, all, [&] { return says(source, "no samples"); });
    write("\0\0\100", 3);
    readUntil(source, all, [&] { return all.size() == 2; });
    EXPECT_THAT(all, testing::ElementsAre(1.0 / 32768, 0.5));
    EXPECT_EQ(source.trouble(), "");
    EXPECT_FALSE(source.hasEnded());
    write("\1", 1);
    close(ends[1]);
    readUntil(source, all, [&] { return source.hasEnded(); });
    EXPECT_TRUE(says(source, "within a sample (bytes left out: 1)"));
}

TEST_F(Stream, ThatCannotBeReadEndsAndSaysWhy)
{
    close(ends[1]);
    const int folder = ::open("/", O_RDONLY);
    const std::pair<int, const char*> rows[] = {
        {9999, "cannot be read"}, {folder, "cannot be read"}, {ends[0], "before a sample came"}};
    for (const auto& [descriptor, text] : rows) {
        StreamSource source = open(descriptor, "cu8");
        readUntil(source, all, [&] { return source.hasEnded(); });
        EXPECT_TRUE(says(source, text)) << qPrintable(source.trouble());
    }
    close(folder);
}

TEST(LiveAddresses, ThatCannotBeOpenedSayWhatToDo)
{
    const std::tuple<const char*, const char*, double, const char*> rows[] = {
        {"-", "cf32", 0.0, "give --format and --sample-rate"},
        {"zmq://127.0.0.1:5555", "cf32", 0.0, "--sample-rate"},
        {"zmq://127.0.0.1", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://127.0.0.1:5555/topic", "cf32", 1e6, "zmq://127.0.0.1:5555"},
        {"zmq://no.such.host.invalid:5555", "cf32", 1e6, "check the name"},
        {"soapy://driver=null", "cf32", 1e6, "leave out --format"},
        {"udp://127.0.0.1:5555", "cf32", 1e6, "give zmq://HOST:PORT"},
    };
    for (const auto& [address, format, sampleRate, advice] : rows) {
        const Recording recording = openLive(address, format, sampleRate);
        EXPECT_FALSE(recording.source) << address;
        EXPECT_THAT(recording.why.toStdString(), testing::HasSubstr(advice)) << address;
    }
}

} // namespace
