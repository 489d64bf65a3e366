// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Counts any traces and points with any settings, and looks whether counts, hits and figures fit
// together; reads masks of any text.
#include "Attack.h"
#include "density/ColorScale.h"
#include "density/Counter.h"
#include "density/DensityExport.h"
#include "density/EyeFigures.h"
#include "density/MaskTest.h"
#include "density/Spread.h"

#include <memory>
#include <vector>

using namespace density;

namespace {

Window anyWindow(Bytes& input)
{
    if (input.flag())
        return {};
    return {input.number(), input.number(), input.number(), input.number()};
}

GridSize anySize(Bytes& input)
{
    constexpr int odd[] = {-1, 0, 1, 2, 7, 100, 333, 8193};
    return {input.oneOf(odd), input.oneOf(odd)};
}

Persistence anyPersistence(Bytes& input)
{
    constexpr Persistence::Kind kinds[] = {Persistence::Kind::Infinite, Persistence::Kind::Newest,
                                           Persistence::Kind::Fading};
    return {input.oneOf(kinds), input.number()};
}

Mask anyMask(Bytes& input)
{
    Mask mask = Mask::standard()[input.below(static_cast<unsigned>(Mask::standard().size()))];
    if (input.flag())
        mask.polygons[0][0] = {input.number(), input.number()};
    if (input.flag())
        mask.margin = input.number();
    return mask;
}

/// Traces of levels with noise, in which some samples are anything.
void addTraces(Counter& counter, Bytes& input, std::size_t length)
{
    const auto count = input.take<std::uint16_t>() % 1500U;
    const double level = input.flag() ? input.number() : 1.0;
    const double noise = input.flag() ? 0.05 : 0.0;
    const std::size_t odd = 1 + input.take<std::uint16_t>();
    std::uint32_t random = input.take<std::uint32_t>();
    std::vector<float> samples(length);
    for (unsigned i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < length; ++k) {
            random = random * 1664525 + 1013904223;
            const double even = random / 4294967296.0 - 0.5;
            const double sign = ((i + k / 8) * 0x9e3779b97f4a7c15U) >> 63 != 0U ? 1.0 : -1.0;
            samples[k] = static_cast<float>(level * (sign + noise * even));
            if ((i * length + k) % odd == odd - 1)
                samples[k] = static_cast<float>(input.number());
        }
        counter.add(samples.data(), length, i);
    }
}

void check(Counter& counter)
{
    const SnapshotPtr picture = counter.snapshot();
    require(picture && picture->counts.size() == picture->size.cellCount() &&
                picture->symbolCount <= picture->allSymbols &&
                picture->allSymbols == counter.allSymbols(),
            "the size of a picture");
    int touched = -1;
    for (std::size_t cell = 0; cell < picture->counts.size(); ++cell) {
        const double count = picture->counts[cell];
        require(count >= 0.0 && count <= static_cast<double>(picture->symbolCount) + 1e-6,
                "a count");
        if (count > 0.0)
            touched = static_cast<int>(cell);
    }
    if (touched >= 0 && counter.settings().persistence.kind == Persistence::Kind::Infinite &&
        static_cast<std::size_t>(picture->symbolCount) == counter.kept().count()) {
        const int column = touched % picture->size.columns, row = touched / picture->size.columns;
        const auto hits =
            counter.hits(picture->window, picture->size, column, row, counter.kept().count());
        require(static_cast<double>(hits.size()) == picture->at(column, row), "who passed");
    }
    toImage(*picture, ColorMapping());
    if (picture->counts.size() < 1000)
        require(toNpy(*picture).size() > 0 && !toCsv(*picture).isEmpty(), "an export");
}

void checkFigures(const Counter& counter, Bytes& input)
{
    if (!counter.settings().shape) {
        counter.errorVectors().figures();
        return;
    }
    const TraceShape& shape = *counter.settings().shape;
    const EyeFigures figures = EyeFigures::of(counter.kept(), shape, input.number());
    require(figures.levels.size() <= EyeFigures::mostLevels &&
                figures.eyes.size() + 1 == std::max<std::size_t>(1, figures.levels.size()),
            "levels and eyes");
    for (std::size_t eye = 0; eye < figures.eyes.size(); ++eye) {
        const double rate = figures.errorRateAt(eye, input.number());
        require(std::isnan(rate) || (rate >= 0.0 && rate <= 1.0), "an error rate");
    }
    const Band band{input.flag() ? Band::Direction::Vertical : Band::Direction::Horizontal,
                    input.number(), input.number()};
    Spread::of(valuesAlong(counter.kept(), shape, band));
}

} // namespace

void attackDensity(Bytes& input)
{
    Counter::Settings settings;
    if (input.flag())
        settings.shape.reset();
    else if (input.flag())
        settings.shape = TraceShape{input.take<std::int16_t>() % 40, input.number()};
    settings.size = anySize(input);
    settings.home = anyWindow(input);
    settings.persistence = anyPersistence(input);
    Counter counter(settings);
    while (!input.isEmpty()) {
        const auto shape = counter.settings().shape;
        const std::size_t length = shape ? static_cast<std::size_t>(shape->sampleCount) : 2;
        switch (input.below(10)) {
        case 0:
            counter.clear();
            break;
        case 1:
            counter.setHome(anyWindow(input));
            break;
        case 2:
            counter.setZoom(input.flag() ? std::optional(anyWindow(input)) : std::nullopt);
            break;
        case 3:
            counter.setPersistence(anyPersistence(input));
            break;
        case 4:
            counter.setSize(anySize(input));
            break;
        case 5:
            counter.setMaskTest(shape ? std::make_unique<MaskTest>(anyMask(input), *shape,
                                                                   input.number(), input.number(),
                                                                   input.number())
                                      : nullptr);
            break;
        case 6:
            counter.setIdeal({{input.number(), input.number()}, {1.0, 0.0}, {-1.0, 0.0}});
            break;
        case 7:
            counter.add(std::vector<float>(length + 1).data(), length + 1, 0);
            checkFigures(counter, input);
            break;
        default:
            addTraces(counter, input, length);
        }
        if (counter.maskTest()) {
            const MaskTest::Result result = counter.maskTest()->result();
            require(result.hitCount <= result.symbolCount &&
                        result.newestHits.size() <= MaskTest::mostKeptHits,
                    "hits of a mask");
        }
        check(counter);
    }
}

void attackMask(Bytes& input)
{
    QByteArray text;
    while (!input.isEmpty())
        text.append(input.take<char>());
    QString error;
    const std::optional<Mask> mask = Mask::fromJson(text, &error);
    require(mask.has_value() == error.isEmpty(), "a mask or a sentence");
    if (!mask)
        return;
    require(mask->isUsable(), "a mask that can be tested");
    const QByteArray written = mask->toJson();
    const std::optional<Mask> again = Mask::fromJson(written);
    require(again && again->toJson() == written && again->polygons == mask->polygons,
            "the mask once more");
    MaskTest test(*mask, {}, 0.1, -1.0, 2.0);
    std::vector<float> trace(33, 0.5F);
    trace[7] = 1e30F;
    test.add(trace.data(), 1);
}
