// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Live.h"
#include "workbench/player/Hints.h"
#include "workbench/sources/StreamSource.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

class Stream : public Live
{
protected:
    Stream() { EXPECT_EQ(pipe(ends), 0); }
    ~Stream() override { close(ends[0]); }
    void write(const char* bytes, std::size_t count) const
    {
        EXPECT_EQ(::write(ends[1], bytes, count), static_cast<ssize_t>(count));
    }
    void open(int descriptor, const char* format)
    {
        source =
            std::make_unique<StreamSource>("pipe", descriptor, *SampleFormat::parse(format), 1e6);
    }
    int ends[2];
};

TEST_F(Stream, TellsASilenceWhileItLasts)
{
    open(ends[0], "rs16");
    write("\1", 1); // is no sample yet
    readUntil([&] { return says("no samples"); });
    write("\0\0\100", 3);
    readUntil([&] { return all.size() == 2; });
    EXPECT_THAT(all, testing::ElementsAre(1.0 / 32768, 0.5));
    EXPECT_EQ(trouble(), "");
    EXPECT_FALSE(source->hasEnded());
    write("\1\1\1", 3);
    while (source->position() == 2)
        source->discard(1);
    close(ends[1]);
    readUntil([&] { return source->hasEnded(); });
    EXPECT_TRUE(says("within a sample (bytes left out: 1)"));
}

TEST_F(Stream, ThatCannotBeReadEndsAndSaysWhy)
{
    close(ends[1]);
    const int folder = ::open("/", O_RDONLY);
    const std::pair<int, const char*> rows[] = {
        {9999, "cannot be read"}, {folder, "cannot be read"}, {ends[0], "before a sample came"}};
    for (const auto& [descriptor, text] : rows) {
        open(descriptor, "cu8");
        readUntil([&] { return source->hasEnded(); });
        EXPECT_TRUE(says(text)) << qPrintable(trouble());
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
        const auto recording = openLive(address, format, sampleRate);
        ASSERT_FALSE(recording) << address;
        EXPECT_THAT(Hints::text(recording.error()).toStdString(), testing::HasSubstr(advice));
    }
}

} // namespace
