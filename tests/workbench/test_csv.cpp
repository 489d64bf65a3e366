// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"

#include <gmock/gmock.h>

namespace {

const double none = std::nan("");

struct SeparatedValues : Recordings
{
    std::unique_ptr<SignalSource> openText(const QByteArray& text, const char* columns = "")
    {
        writeFile(path("a.csv"), text);
        Recording::Options options;
        options.columns = QString(columns).split(',', Qt::SkipEmptyParts);
        return open(path("a.csv"), options);
    }
};

TEST_F(SeparatedValues, AreAsTheirHeadsSay)
{
    // Text, columns wanted, sample rate, channels (negative: complex ones), values.
    const std::tuple<QByteArray, const char*, double, int, std::vector<double>> rows[] = {
        // Separators, decimal commas, line ends and blanks; the last row may lack its end.
        {"1.5\n-2e1\n+3", "", 48e3, 1, {1.5, -20, 3}},
        {"a;b\n0,5;-1,25\n1;2\n", "", 48e3, 2, {0.5, -1.25, 1, 2}},
        {"\"a\",\"b\"\n\"0,5\",\"1\"\n\"1,5\",\"2\"\n", "", 48e3, 2, {0.5, 1, 1.5, 2}},
        {"a\tb\r1\t2\r3\t4\r", "", 48e3, 2, {1, 2, 3, 4}},
        {"1.5 | 2 | 3\n4|5|6", "", 48e3, 3, {1.5, 2, 3, 4, 5, 6}},
        {"# a b c\n  1   2 3\n  4   5 6\n", "", 48e3, 3, {1, 2, 3, 4, 5, 6}},
        {"\xef\xbb\xbf\x31,5\n2,6\n3,9\n", "", 48e3, -1, {1, 5, 2, 6, 3, 9}},
        // Columns of time, whatever its unit, or of a count.
        {"Time,V\n0,5\n0.001,6\n0.002,7\n", "", 1e3, 1, {5, 6, 7}},
        {"Zeit;U\n\xb5s;V\n0;5\n0,5;6\n1;7\n", "", 2e6, 1, {5, 6, 7}},
        {"t/ms;U/V\n-20;5\n-10;6\n0;7\n", "", 100, 1, {5, 6, 7}},
        {"V,Time [min]\n5,1\n6,21\n7,41\n", "", 1.0 / 1200, 1, {5, 6, 7}},
        {"0.1,5,1\n0.2,6,2\n0.3,7,4\n0.4,8,9\n", "", 10, 2, {5, 1, 6, 2, 7, 4, 8, 9}},
        {",a\n0,5\n1,6\n2,9\n3,9", "", 48e3, 1, {5, 6, 9, 9}},
        {"index,time,a,time\n0,1,5,2\n1,2,6,3\n2,3,9,4\n3,4,9,5", "", 1, 1, {5, 6, 9, 9}},
        {"x,y\n3,5\n1,6\n2,7\n", "", 48e3, 2, {3, 5, 1, 6, 2, 7}}, // x is no time
        {"X,A,B,Increment\nSequence,V,-1,5e-10\n0,5,\n1,6,\n2,7,\n3,8", "", 2e9, 1, {5, 6, 7, 8}},
        // A preamble; cells that are missing or no numbers; text columns.
        {"# Sample Rate: 250\nScale,2,2\n,,\nLabel,,\nA,B\n5,6\n7,8\n9,5",
         "",
         250,
         2,
         {5, 6, 7, 8, 9, 5}},
        {"a,b\n1,2\n,3\nover,4\n5\n6,7\n", "", 48e3, 2, {1, 2, none, 3, none, 4, 5, none, 6, 7}},
        {"when,a\n12:00:01,5\n12:00:02,6\n12:00:03,7\n", "", 48e3, 1, {5, 6, 7}},
        {"a\n1\nnan\n-inf\n1e999\n", "", 48e3, 1, {1, none, -HUGE_VAL, HUGE_VAL}},
        // I and Q, and chosen columns.
        {"t,Re,Im\n0,5,1\n0.1,6,2\n0.2,7,4\n", "", 10, -1, {5, 1, 6, 2, 7, 4}},
        {"t,Q,a,I\n0,5,1,0\n0.1,6,2,1\n", "I,Q", 10, -1, {0, 5, 1, 6}},
        {"t,5,2\n0,5,1\n0.1,6,2\n", "3,2,1", 10, 3, {1, 5, 0, 2, 6, 0.1}}};
    for (const auto& [text, columns, sampleRate, channelCount, values] : rows) {
        SCOPED_TRACE(text.constData());
        const auto source = openText(text, columns);
        ASSERT_TRUE(source) << qPrintable(why);
        EXPECT_DOUBLE_EQ(source->facts().sampleRate, sampleRate);
        EXPECT_EQ(source->facts().channelCount * (source->facts().isComplex ? -1 : 1),
                  channelCount);
        EXPECT_EQ(source->sampleCount(),
                  static_cast<std::int64_t>(values.size()) / source->facts().valueCount());
        EXPECT_THAT(readAll(*source, 2),
                    testing::Pointwise(testing::NanSensitiveDoubleEq(), values));
    }
}

TEST_F(SeparatedValues, ThatCannotBeReadSayWhy)
{
    const std::tuple<QByteArray, const char*, const char*> rows[] = {
        {"a,b\nc,d\n", "", "no row of numbers"},
        {QByteArray(5000, '\0'), "", "no row of numbers"},
        {QByteArray(2 << 20, '"'), "", "no row of numbers"},
        {"\xff\xfe"
         "1\0\n\0",
         "", "UTF-16"},
        {"t,a\n0,1\n1e-15,2\n2e-15,3\n", "", "the sample rate is 1e+15 Hz"},
        {"a,b\n1,2\n", "%2\x1b[1m", "no column \"%2\ufffd[1m\""},
        {"a,b\n1,2\n", "3", "no column \"3\""}};
    for (const auto& [text, columns, says] : rows) {
        EXPECT_FALSE(openText(text, columns)) << says;
        EXPECT_THAT(why.toStdString(), testing::HasSubstr(says));
    }
}

TEST_F(SeparatedValues, TellTimesThatAreOff)
{
    // A row each 12.5 ms; how its time is written, and what it is.
    const auto text = [](const char* names, char format, int digits,
                         const std::function<double(int)>& time) {
        QByteArray result(names);
        for (int i = 0; i < 200; ++i)
            result += QByteArray::number(time(i), format, digits) + "," +
                      QByteArray::number(i % 7) + "\n";
        return result;
    };
    const auto even = [](int i) { return 0.0125 * i; };
    const auto gap = [](int i) { return 0.0125 * (i < 100 ? i : i + 1); };
    const auto again = [](int i) { return 0.0125 * (i < 100 ? i : i - 100); };
    const auto shaky = [](int i) { return 0.0125 * i + (i % 2 ? 0.002 : 0.0); };
    const std::pair<QByteArray, const char*> rows[] = {
        {text("Time,V\n", 'f', 4, even), ""},
        {text("Time,V\n", 'f', 2, even), ""}, // rounded by up to half a step
        {text("Time,V\n", 'g', 3, even), ""},
        {text("Time,V\n", 'e', 17, even), ""},
        {text("", 'f', 4, even), ""},
        {text("Time,V\n", 'f', 4, gap), "not evenly spaced, first in row 102"},
        {text("Time,V\n", 'f', 3, gap), "not evenly spaced, first in row 102"},
        {text("", 'f', 4, gap), "not evenly spaced, first in row 101"},
        {text("t,V\n", 'g', 6, again), "run backwards, first in row 102"},
        {text("Time,V\n", 'f', 4, [](int i) { return -0.0125 * i; }), "run backwards"},
        {text("Time,V\n", 'f', 4, shaky), "not evenly spaced, first in row 3"}};
    for (const auto& [content, says] : rows) {
        SCOPED_TRACE(content.left(60).constData());
        const auto source = openText(content);
        ASSERT_TRUE(source) << qPrintable(why);
        EXPECT_EQ(source->facts().valueCount(), 1);
        // The first and the last time are rounded, by a hundredth together at most, of 2.5 s.
        EXPECT_NEAR(source->facts().sampleRate, 80.0, 0.004 * 80.0);
        EXPECT_EQ(notices.size(), *says ? 1 : 0);
        EXPECT_THAT(notices.join(' ').toStdString(), testing::HasSubstr(says));
    }
}

TEST_F(SeparatedValues, MayBeLong)
{
    constexpr int count = 300000;
    for (const bool isCounted : {true, false}) { // the rows of too long a file are not
        QByteArray text("Value,Note\n");
        for (int i = 0; i < count; ++i)
            text += QByteArray::number(i % 1000) + (isCounted ? "" : QByteArray(120, ' ')) +
                    (i % 7 ? "\n" : ",\"two\nlines, one cell\"\n");
        const auto source = openText(text);
        ASSERT_TRUE(source) << qPrintable(why);
        EXPECT_EQ(source->sampleCount().has_value(), isCounted);
        std::vector<double> block;
        for (const std::int64_t position : {200001, 5, 0, 299998, 123456, 123457}) {
            ASSERT_TRUE(source->seek(position));
            EXPECT_EQ(source->read(block, 2), 2U);
            EXPECT_EQ(block[1], static_cast<double>((position + 1) % 1000));
            EXPECT_EQ(source->position(), position + 2);
        }
        EXPECT_FALSE(source->seek(count + 1));
        EXPECT_EQ(source->sampleCount(), count);
        EXPECT_EQ(source->position(), 123459);
        EXPECT_EQ(source->read(block, 1), 1U);
        EXPECT_EQ(block[0], 459.0);
        EXPECT_TRUE(source->seek(count));
        EXPECT_EQ(source->read(block, 1), 0U);
    }
}

} // namespace
