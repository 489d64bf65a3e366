// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/PixelRuns.h"

#include <algorithm>

#if defined(__GNUC__) && defined(__x86_64__)
#define ORVANE_HAS_AVX2_VARIANT
#endif

namespace {

using Length = std::uint16_t;

/// Columns whose runs are found at once.
constexpr int lanes = 4;
using Doubles = double __attribute__((vector_size(lanes * sizeof(double))));
using Ints = int __attribute__((vector_size(lanes * sizeof(int))));
using Places = unsigned __attribute__((vector_size(lanes * sizeof(unsigned))));
constexpr Ints steps = {0, 1, 2, 3};

/// Where runs are noted: rows of lengths.
struct Notes
{
    Length* lengths;
    int width;
    int thickness;

    // Inline, so that each variant is compiled for its processor. All give the same runs.
    [[gnu::always_inline]] void note(const PixelRuns::Flat& line) const
    {
        const auto length = static_cast<Length>(thickness);
        for (int first = line.firstColumn; first <= line.lastColumn; first += lanes) {
            // The last column again, to fill the lanes.
            const Ints all = first + steps;
            const Ints columns = all < line.lastColumn ? all : Ints{} + line.lastColumn;
            const Doubles middles = __builtin_convertvector(columns, Doubles) + 0.5;
            const Doubles rows = line.y + (middles - line.x) * line.slope;
            const auto places =
                reinterpret_cast<Places>(__builtin_convertvector(rows, Ints) * width + columns);
            for (int i = 0; i < lanes; ++i)
                lengths[places[i]] = length;
        }
    }
    [[gnu::always_inline]] void note(const PixelRuns::Steep& line) const
    {
        int row = line.firstRow;
        for (int first = line.firstColumn; first <= line.lastColumn; first += lanes) {
            const Ints all = first + steps;
            const auto isInner = all < line.lastColumn;
            const Ints borders = isInner ? all + 1 : Ints{} + line.lastColumn;
            const Doubles edges =
                line.y - (line.x - __builtin_convertvector(borders, Doubles)) * line.slope + 0.5;
            const Ints inner = __builtin_convertvector(edges, Ints);
            const Ints ends = isInner ? inner : Ints{} + line.lastRow;
            const Ints begins = {row, ends[0], ends[1], ends[2]};
            row = ends[lanes - 1];
            const auto isDown = begins < ends;
            const Ints counts = isDown ? ends - begins : begins - ends;
            const Ints places = (isDown ? begins : ends) * width;
            for (int i = 0; i < thickness; ++i)
                note(places, all + i, counts);
        }
    }

private:
    [[gnu::always_inline]] void note(const Ints& rows, const Ints& columns,
                                     const Ints& counts) const
    {
        const auto isIn = (columns >= 0) & (columns < width);
        const auto places = reinterpret_cast<Places>(rows + (isIn ? columns : Ints{}));
        const Ints lengthsIn = isIn ? counts : Ints{};
        for (int i = 0; i < lanes; ++i)
            lengths[places[i]] = std::max(lengths[places[i]], static_cast<Length>(lengthsIn[i]));
    }
};

/// From what was left of the runs above a row to what is left from it on.
[[gnu::always_inline]] inline void follow(const Length* lengths, int width, Length* left)
{
    for (int x = 0; x < width; ++x) {
        const auto before = static_cast<Length>(left[x] > 0 ? left[x] - 1 : 0);
        left[x] = std::max(lengths[x], before);
    }
}

[[gnu::always_inline]] inline void drawRow(const Length* lengths, int width, Length* left,
                                           QRgb color, const QRgb* ground, QRgb* pixels)
{
    follow(lengths, width, left);
    for (int x = 0; x < width; ++x) {
        // Read even where it is not needed, so that there is no branch.
        const QRgb behind = ground[x];
        pixels[x] = left[x] ? color : behind;
    }
}

#ifdef ORVANE_HAS_AVX2_VARIANT
template<class Line>
__attribute__((target("avx2"))) void noteByAvx2(const Notes& notes, const Line* lines,
                                                std::size_t count)
{
    for (const Line* line = lines; line != lines + count; ++line)
        notes.note(*line);
}

__attribute__((target("avx2"))) void drawRowByAvx2(const Length* lengths, int width, Length* left,
                                                   QRgb color, const QRgb* ground, QRgb* pixels)
{
    drawRow(lengths, width, left, color, ground, pixels);
}

bool hasAvx2()
{
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}
#endif

template<class Line>
void noteLines(const Notes& notes, const Line* lines, std::size_t count)
{
#ifdef ORVANE_HAS_AVX2_VARIANT
    if (hasAvx2()) {
        noteByAvx2(notes, lines, count);
        return;
    }
#endif
    for (const Line* line = lines; line != lines + count; ++line)
        notes.note(*line);
}

} // namespace

void PixelRuns::Clear(const QSize& size, int thickness)
{
    m_size = size;
    m_thickness = thickness;
    m_above = thickness > thickest ? 0 : thickness;
    m_flats.resize(portion);
    m_flatCount = 0;
    m_steeps.clear();
    // A note without a pixel may be in the row below the picture.
    m_lengths.assign(static_cast<std::size_t>(size.width()) *
                         static_cast<std::size_t>(m_above + size.height() + 1),
                     0);
}

void PixelRuns::NoteFlats()
{
    // The thickness in a line's Y leads to the rows above.
    noteLines({m_lengths.data(), m_size.width(), m_thickness}, m_flats.data(), m_flatCount);
    m_flatCount = 0;
}

void PixelRuns::NoteSteeps()
{
    noteLines({At(0), m_size.width(), m_thickness}, m_steeps.data(), m_steeps.size());
    m_steeps.clear();
}

void PixelRuns::Draw(QRgb color, const QImage& backdrop, QImage& picture)
{
    NoteFlats();
    NoteSteeps(); // a note of a flat line does not look at what it replaces
    const int width = m_size.width();
    m_left.assign(static_cast<std::size_t>(width), 0);
    for (int row = -m_above; row < 0; ++row)
        follow(At(row), width, m_left.data());
    for (int row = 0; row < m_size.height(); ++row) {
        const auto* ground = reinterpret_cast<const QRgb*>(backdrop.constScanLine(row));
        auto* pixels = reinterpret_cast<QRgb*>(picture.scanLine(row));
#ifdef ORVANE_HAS_AVX2_VARIANT
        if (hasAvx2()) {
            drawRowByAvx2(At(row), width, m_left.data(), color, ground, pixels);
            continue;
        }
#endif
        drawRow(At(row), width, m_left.data(), color, ground, pixels);
    }
}
