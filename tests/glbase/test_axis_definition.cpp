// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/axisDefinition.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr auto across = axisDefinition::Orientation::Horizontal;
constexpr auto up = axisDefinition::Orientation::Vertical;

axisDefinition Axis(double start, double stop, int length,
                    axisDefinition::Orientation orientation = across)
{
    axisDefinition axis(orientation);
    axis.SetRange(start, stop);
    axis.SetLength(length);
    return axis;
}

TEST(AxisDefinition, TicksStandAtRoundNumbers)
{
    const std::tuple<axisDefinition, std::vector<double>, const char*> rows[] = {
        {Axis(-100, 0, 401), {-100, -80, -60, -40, -20, 0}, "-100"},
        {Axis(0, -130, 401), {0, -20, -40, -60, -80, -100, -120}, "0"},
        {Axis(-1, 1, 301, up), {-1, -0.5, 0, 0.5, 1}, "-1.0"},
        {Axis(-0.3, 0.32, 500), {-0.3, -0.2, -0.1, 0, 0.1, 0.2, 0.3}, "-0.3"},
        {Axis(-3e-7, 3e-7, 301), {-2e-7, 0, 2e-7}, "-2e-07"},
        {Axis(1e9, 1e9 + 2, 250), {1e9, 1e9 + 0.5, 1e9 + 1, 1e9 + 1.5, 1e9 + 2}, "1000000000"},
        {Axis(-1.1e35, 1.1e35, 401), {-1e35, -5e34, 0, 5e34, 1e35}, "-1e+35"},
        {Axis(7.2, 7.8, 20), {}, ""}};
    for (const auto& [axis, ticks, label] : rows) {
        std::vector<double> values;
        for (const auto& tick : axis.GetTicks())
            values.push_back(tick.value);
        EXPECT_EQ(values, ticks);
        EXPECT_EQ(values.empty() ? QString() : axis.Label(values.front()), label);
    }
}

TEST(AxisDefinition, EveryRangeEndsInFewSortedTicksInsideIt)
{
    const double most = std::numeric_limits<double>::max();
    for (const double start : {0.0, 1.0, -1.0, 5e-324, 1e-300, 1.1e35, 1e20, most, -most,
                               double(INFINITY), double(NAN)}) {
        for (const double stop :
             {-0.0, 1.0 + 1e-15, -1.1e35, 1e20 + 2e5, -1e-300, most, most / 2, -double(INFINITY)}) {
            for (const int length : {-5, 0, 1, 2, 60, 1000, 2'000'000'000}) {
                SCOPED_TRACE(testing::Message() << start << " to " << stop << ", " << length);
                const axisDefinition axis = Axis(start, stop, length, length % 7 ? across : up);
                const auto& ticks = axis.GetTicks();
                ASSERT_LE(ticks.size(), std::size_t(axisDefinition::MaxTickCount));
                const double margin = std::abs(stop - start) * 1e-6;
                for (std::size_t i = 0; i < ticks.size(); ++i) {
                    const double value = ticks[i].value;
                    ASSERT_FALSE(std::signbit(value) && value == 0.0);
                    ASSERT_GE(value, std::min(start, stop) - margin);
                    ASSERT_LE(value, std::max(start, stop) + margin);
                    ASSERT_TRUE(i == 0 || (value > ticks[i - 1].value) == (stop > start));
                }
                axis.PixelToValue(17);
            }
        }
    }
}

TEST(AxisDefinition, PixelsFollowTheTracesAndComeBack)
{
    EXPECT_EQ(Axis(-100, 0, 101).ValueToPixel(-10), 90);
    EXPECT_EQ(Axis(-1, 1, 101, up).ValueToPixel(0), 51);
    EXPECT_EQ(Axis(-1, 1, 101, up).ValueToPixel(-1.005), 101); // toward zero
    EXPECT_EQ(Axis(0, 1e-9, 101).ValueToPixel(1e9), 1'000'000'000);
    EXPECT_EQ(Axis(0, 1, 101).ValueToPixel(NAN), 0);
    for (const auto& [start, stop] :
         {std::pair(-100.0, 0.0), {0.1, 0.7}, {1e6 + 1, 1e6}, {-1.1e35, 1.1e35}})
        for (const auto orientation : {across, up})
            for (int pixel = -30; pixel < 800; ++pixel) {
                const axisDefinition axis = Axis(start, stop, 777, orientation);
                ASSERT_EQ(axis.ValueToPixel(axis.PixelToValue(pixel)), pixel) << start;
            }
    for (const auto& axis : {Axis(3, 3, 100, up), Axis(3, NAN, 100, up), Axis(3, 4, 1, up)}) {
        EXPECT_FALSE(axis.IsUsable());
        EXPECT_EQ(axis.ValueToPixel(1), axis.GetLength());
        EXPECT_EQ(axis.PixelToValue(50), 3.0);
    }
}

struct Formatter : IStringFormatter
{
    QString text;
    const QString& Format(double value) override { return text = QString::number(value, 'f', 1); }
    const QString& FormatWithUnit(double value) override { return text = Format(value) + " V"; }
};

TEST(AxisDefinition, LabelsAreTheFormattersOrPlain)
{
    axisDefinition axis = Axis(-1, 1, 301);
    EXPECT_EQ(axis.Label(-0.001), "0.0");
    EXPECT_EQ(axis.LabelWithUnit(-0.26), "-0.260");
    EXPECT_EQ(Axis(-3e-7, 3e-7, 301).Label(1e-20), "0");
    EXPECT_EQ(Axis(1, 1, 301).Label(0.25), "0.25"); // no step to go by
    axis.SetStringFormatter(std::make_shared<Formatter>());
    EXPECT_EQ(axis.Label(0.55), "0.6");
    for (const auto& [start, stop] : {std::pair(-100.0, 0.0), {-0.02, 0.0}, {3e-9, -4e-9}}) {
        axis.SetRange(start, stop);
        QString previous;
        for (int pixel = 0; pixel < 301; ++pixel) {
            const QString readout = axis.LabelWithUnit(axis.PixelToValue(pixel));
            ASSERT_TRUE(readout.endsWith(" V") && !readout.startsWith("-0.0 ")) << pixel;
            ASSERT_NEAR(axis.ValueToPixel(readout.chopped(2).toDouble()), pixel, 1);
            ASSERT_NE(std::exchange(previous, readout), readout) << pixel;
        }
    }
    axis.SetRange(-100, 100); // coarser than the formatter
    EXPECT_EQ(axis.LabelWithUnit(0.5), "0.5 V");
    struct : Formatter
    {
        const QString& FormatWithUnit(double value) override
        {
            return text = QString::number(1000 * value, 'f', 0) + " mV";
        }
    } scaled;
    for (const double stop : {100.0, 0.02}) { // coarse enough, and not
        axisDefinition other = Axis(0, stop, 301);
        other.SetStringFormatter({std::shared_ptr<IStringFormatter>(), &scaled});
        EXPECT_EQ(other.LabelWithUnit(0.016), "16 mV");
    }
    axis.SetUnit(" Hz");
    EXPECT_EQ(axis.LabelWithUnit(0.5), "0.5 Hz");
    for (const double start : {0.01, -0.04}) { // too coarse a formatter: "0.0" twice, "-0.0"
        axis.SetRange(start, 0.04);
        EXPECT_EQ(axis.Label(0.02), "0.02");
    }
    axis.SetRange(-1, 1);
    EXPECT_EQ(axis.Label(-1), "-1.0");
}

} // namespace
