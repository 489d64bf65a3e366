// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>
#include <QRgb>
#include <QSize>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Pixels of a picture to light, as runs in its columns. For each pixel it keeps the length of the
/// longest run that begins there: a run costs one note, however long it is and whatever it covers.
/// Lines all have the same thickness, and their middle lies in the picture.
class PixelRuns
{
public:
    /// Thicker lines are to be added as runs.
    static constexpr int thickest = 255;

    /// A line of one run in each column, as high as the line is thick.
    struct Flat
    {
        double x;        ///< Where it begins.
        double y;        ///< Upper edge there, and the thickness, so that it is never negative.
        double slope;    ///< Rows a column, from -1 to 1.
        int firstColumn; ///< The first whose middle is not before the line.
        int lastColumn;
    };
    /// A line of runs that begin in the row in which the last one ended, each drawn in as many
    /// columns as the line is thick.
    struct Steep
    {
        double x;     ///< Left edge where it ends.
        double y;     ///< Middle there.
        double slope; ///< Rows a column; 0 where it is in one column.
        int firstColumn;
        int lastColumn;
        int firstRow; ///< Edges of rows; the first may be below the last.
        int lastRow;
    };

    /// Forgets all lines and runs.
    /// @param size  of the picture; at most 65535 rows.
    /// @param thickness  of the lines; all are added as runs where it is above the thickest.
    void Clear(const QSize& size, int thickness);
    /// Adds a run in a column, from a row until before another one.
    void Add(int column, int first, int end)
    {
        if (first < end) {
            Length& length = At(first)[column];
            length = std::max(length, static_cast<Length>(end - first));
        }
    }
    void Add(const Flat& line)
    {
        m_flats[m_flatCount++] = line;
        if (m_flatCount == m_flats.size())
            NoteFlats();
    }
    void Add(const Steep& line) { m_steeps.push_back(line); }
    /// Draws what was added since Clear over a backdrop of that size, once.
    /// @param picture  of the backdrop's size and format.
    void Draw(QRgb color, const QImage& backdrop, QImage& picture);

private:
    using Length = std::uint16_t;
    /// Lines that are noted together, soon enough that they still are in the cache.
    static constexpr std::size_t portion = 128;

    Length* At(int row)
    {
        return m_lengths.data() + static_cast<std::ptrdiff_t>(row + m_above) * m_size.width();
    }
    void NoteFlats();
    void NoteSteeps();

    QSize m_size;
    int m_thickness = 1;
    int m_above = 0;               // rows above the picture, in which a thick line may begin
    std::vector<Length> m_lengths; // by rows
    std::vector<Length> m_left;    // one row: what is left of the runs
    std::vector<Flat> m_flats;     // of these the first few are not noted yet
    std::size_t m_flatCount = 0;
    std::vector<Steep> m_steeps; // noted after all flat lines
};
