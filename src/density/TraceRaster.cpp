// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/TraceRaster.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__GNUC__) && defined(__x86_64__)
#define ORVANE_HAS_AVX2_VARIANT
#include <immintrin.h>
#endif

namespace density {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Borders that are placed at once: a few too many, whose places are then written over.
constexpr int lanes = 4;

// Beyond, a line is as good as vertical, and its slope still is a number.
constexpr double farthestRow = 1e12;

/// A place, see Cells.
int placeOf(double row, double top, int stride, int column)
{
    const double inside = row > 0.0 ? row : 0.0;
    const int whole = static_cast<int>(inside < top ? inside : top);
    return (whole + (row >= 0.0 ? 1 : 0)) * stride + column;
}

} // namespace

/// What the loop over all borders needs.
struct TraceRaster::Geometry
{
    const std::vector<Piece>& pieces;
    const double* fractions;
    double top;
    int stride;

    void place(const double* rows, int* places) const
    {
        for (const Piece& piece : pieces) {
            const double row = rows[piece.sample];
            const double slope = rows[piece.sample + 1] - row;
            for (int border = piece.firstBorder; border <= piece.lastBorder; ++border)
                places[border] = placeOf(row + fractions[border] * slope, top, stride, border);
        }
    }
#ifdef ORVANE_HAS_AVX2_VARIANT
    // The same, of several borders at once. Those beyond a piece are written over by the next one.
    __attribute__((target("avx2"))) void placeByAvx2(const double* rows, int* places) const
    {
        const __m256d highest = _mm256_set1_pd(top), lowest = _mm256_set1_pd(-1.0);
        const __m128i rowStride = _mm_set1_epi32(stride);
        for (const Piece& piece : pieces) {
            const __m256d row = _mm256_set1_pd(rows[piece.sample]);
            const __m256d slope = _mm256_set1_pd(rows[piece.sample + 1] - rows[piece.sample]);
            // Of row -1 at the first borders.
            __m128i start = _mm_add_epi32(_mm_set1_epi32(piece.firstBorder + stride),
                                          _mm_setr_epi32(0, 1, 2, 3));
            for (int border = piece.firstBorder; border <= piece.lastBorder; border += lanes) {
                const __m256d part = _mm256_loadu_pd(fractions + border);
                const __m256d at = _mm256_floor_pd(_mm256_add_pd(row, _mm256_mul_pd(part, slope)));
                const __m128i whole =
                    _mm256_cvttpd_epi32(_mm256_min_pd(_mm256_max_pd(at, lowest), highest));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(places + border),
                                 _mm_add_epi32(_mm_mullo_epi32(whole, rowStride), start));
                start = _mm_add_epi32(start, _mm_set1_epi32(lanes));
            }
        }
    }
#endif
};

// By their bits, of several at once: the exponent of what is not finite is the largest.
std::size_t TraceRaster::badSamplesOf(const float* samples, std::size_t count)
{
    constexpr std::uint32_t exponent = 0x7f800000;
    std::uint32_t bad = 0;
    for (std::size_t k = 0; k < count; ++k) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, samples + k, sizeof bits);
        bad += (bits & exponent) == exponent ? 1 : 0;
    }
    return bad;
}

TraceRaster::TraceRaster(const TraceShape& shape, const Window& window, const GridSize& size)
    : m_shape(shape)
    , m_size(size)
    , m_bottom(window.bottom)
    , m_rowsPerLevel(size.rows / window.height())
    , m_firstColumn(size.columns)
    , m_rows(at(shape.sampleCount))
{
    m_cells.rowCount = size.rows;
    m_cells.stride = size.columns + 1;
    m_parts = m_cells;
    placeColumns(window);
    placePieces();
    m_cells.places.resize(at(size.columns + 1 + lanes));
    m_cells.spans.resize(m_kinks.size());
    for (const Piece& piece : m_pieces) {
        if (piece.firstBorder < piece.lastBorder)
            m_cells.stretches.push_back({piece.firstBorder, piece.lastBorder, false});
    }
}

// Where columns begin and end on traces, which is the same for all of them.
void TraceRaster::placeColumns(const Window& window)
{
    const double last = m_shape.sampleCount - 1;
    for (int border = 0; border <= m_size.columns; ++border) {
        const double time =
            window.left + window.width() * (static_cast<double>(border) / m_size.columns);
        m_positions.push_back((time - m_shape.timeOf(0)) * m_shape.samplesPerSymbol());
    }
    for (int column = 0; column < m_size.columns; ++column) {
        if (positionOf(column + 1) < 0.0 || positionOf(column) > last)
            continue;
        m_firstColumn = std::min(m_firstColumn, column);
        m_lastColumn = column;
    }
}

// Borders on one piece bound columns in which a line only rises or falls, those on two bound kinks.
void TraceRaster::placePieces()
{
    const double last = m_shape.sampleCount - 1;
    m_firstEnd = m_firstColumn;
    for (int border = 0; border <= m_size.columns; ++border) {
        const double position = std::clamp(positionOf(border), 0.0, last);
        const int sample = std::min(static_cast<int>(position), m_shape.sampleCount - 2);
        m_fractions.push_back(position - sample);
        if (border < m_firstColumn || border > m_lastColumn + 1 || position >= last)
            continue;
        if (m_pieces.empty() || m_pieces.back().sample != sample)
            m_pieces.push_back({sample, border, border});
        m_pieces.back().lastBorder = border;
        m_firstEnd = border + 1;
    }
    m_fractions.resize(m_fractions.size() + lanes);
    std::size_t piece = 0;
    for (int column = m_firstColumn; column <= m_lastColumn; ++column) {
        while (piece < m_pieces.size() && m_pieces[piece].lastBorder <= column)
            ++piece;
        if (piece < m_pieces.size() && m_pieces[piece].firstBorder <= column)
            continue;
        const double left = std::max(positionOf(column), 0.0);
        const int first = static_cast<int>(left) + 1;
        // One at the left border is that border's.
        const int from = positionOf(column) < 0.0 ? 0 : first;
        const double right = std::min(positionOf(column + 1), last + 1.0);
        m_kinks.push_back({column, from, std::max(from, static_cast<int>(std::ceil(right)))});
    }
}

double TraceRaster::rowOf(float level) const
{
    const double row = (static_cast<double>(level) - m_bottom) * m_rowsPerLevel;
    const double above = row > -farthestRow ? row : -farthestRow;
    return above < farthestRow ? above : farthestRow;
}

const Cells& TraceRaster::take(const float* trace)
{
    const bool isWhole = badSamplesOf(trace, at(m_shape.sampleCount)) == 0;
    if (isWhole)
        takeWhole(trace);
    else
        takeParts(trace);
    return isWhole ? m_cells : m_parts;
}

void TraceRaster::takeWhole(const float* trace)
{
    for (int k = 0; k < m_shape.sampleCount; ++k)
        m_rows[at(k)] = rowOf(trace[k]);
    const double top = m_size.rows;
    const int stride = m_cells.stride;
    int* const places = m_cells.places.data();
    const Geometry geometry{m_pieces, m_fractions.data(), top, stride};
#ifdef ORVANE_HAS_AVX2_VARIANT
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        geometry.placeByAvx2(m_rows.data(), places);
    else
#endif
        geometry.place(m_rows.data(), places);
    for (int border = m_firstEnd; border <= m_lastColumn + 1; ++border)
        places[border] = placeOf(m_rows.back(), top, stride, border);
    Cells::Stretch* stretch = m_cells.stretches.data();
    for (const Piece& piece : m_pieces) {
        if (piece.firstBorder < piece.lastBorder)
            stretch++->isRising = m_rows[at(piece.sample)] <= m_rows[at(piece.sample + 1)];
    }
    Cells::Span* span = m_cells.spans.data();
    for (const Kink& kink : m_kinks) {
        const int left = places[kink.column], right = places[kink.column + 1] - 1;
        int low = std::min(left, right), high = std::max(left, right);
        for (int sample = kink.firstSample; sample < kink.lastSample; ++sample) {
            const int place = placeOf(m_rows[at(sample)], top, stride, kink.column);
            low = std::min(low, place);
            high = std::max(high, place);
        }
        *span++ = {low, high};
    }
}

// Each stretch of good samples by itself.
void TraceRaster::takeParts(const float* trace)
{
    std::vector<Cells::Span>& spans = m_parts.spans;
    spans.clear();
    for (int k = 0; k < m_shape.sampleCount; ++k) {
        if (!std::isfinite(trace[k]))
            continue;
        const int first = k;
        while (k + 1 < m_shape.sampleCount && std::isfinite(trace[k + 1]))
            ++k;
        addSpans(trace, first, k);
    }
    // Stretches may share a column.
    const int stride = m_cells.stride;
    std::sort(spans.begin(), spans.end(), [&](const Cells::Span& one, const Cells::Span& other) {
        const int column = one.low % stride, otherColumn = other.low % stride;
        return column != otherColumn ? column < otherColumn : one.low < other.low;
    });
    std::size_t kept = 0;
    for (std::size_t k = 1; k < spans.size(); ++k) {
        const bool isSameColumn = (spans[k].low - spans[kept].low) % stride == 0;
        if (isSameColumn && spans[k].low <= spans[kept].high + stride)
            spans[kept].high = std::max(spans[kept].high, spans[k].high);
        else
            spans[++kept] = spans[k];
    }
    spans.resize(spans.empty() ? 0 : kept + 1);
}

double TraceRaster::rowAt(const float* trace, double position) const
{
    const int sample = static_cast<int>(position);
    const double row = rowOf(trace[sample]);
    const double fraction = position - sample;
    // A stretch may end with this sample.
    return fraction == 0.0 ? row : row + fraction * (rowOf(trace[sample + 1]) - row);
}

// The places of a column that the samples from first to last touch; none: low above high.
Cells::Span TraceRaster::columnOf(const float* trace, int column, int firstSample,
                                  int lastSample) const
{
    const double left = std::max<double>(positionOf(column), firstSample);
    const double right = std::min<double>(positionOf(column + 1), lastSample);
    if (left > right)
        return {1, 0};
    double low = rowAt(trace, left);
    double high = low;
    const auto include = [&](double row) {
        low = std::min(low, row);
        high = std::max(high, row);
    };
    include(rowAt(trace, right));
    for (int k = static_cast<int>(std::ceil(left)); k < right; ++k)
        include(rowOf(trace[k]));
    return {placeOf(low, m_size.rows, m_cells.stride, column),
            placeOf(high, m_size.rows, m_cells.stride, column)};
}

void TraceRaster::addSpans(const float* trace, int firstSample, int lastSample)
{
    for (int column = m_firstColumn; column <= m_lastColumn; ++column) {
        if (positionOf(column + 1) < firstSample)
            continue;
        if (positionOf(column) > lastSample)
            break;
        const Cells::Span span = columnOf(trace, column, firstSample, lastSample);
        if (span.low <= span.high)
            m_parts.spans.push_back(span);
    }
}

bool TraceRaster::touches(const float* trace, int column, int row) const
{
    if (column < m_firstColumn || column > m_lastColumn || row < 0 || row >= m_size.rows)
        return false;
    for (int k = 0; k < m_shape.sampleCount; ++k) {
        if (!std::isfinite(trace[k]))
            continue;
        const int first = k;
        while (k + 1 < m_shape.sampleCount && std::isfinite(trace[k + 1]))
            ++k;
        const Cells::Span span = columnOf(trace, column, first, k);
        const int place = m_cells.placeOf(row, column);
        if (span.low <= place && place <= span.high)
            return true;
    }
    return false;
}

} // namespace density
