// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/DensityExport.h"

#include "density/ColorScale.h"

#include <QtEndian>

#include <cstring>

namespace density {

QByteArray toCsv(const Snapshot& snapshot)
{
    QByteArray text("x,y,count\n");
    const Window& window = snapshot.window;
    const GridSize& size = snapshot.size;
    for (int row = 0; row < size.rows; ++row) {
        for (int column = 0; column < size.columns; ++column) {
            const double count = snapshot.at(column, row);
            if (!(count > 0.0))
                continue;
            const double x = window.left + window.width() * ((column + 0.5) / size.columns);
            const double y = window.bottom + window.height() * ((row + 0.5) / size.rows);
            text += QByteArray::number(x, 'g', 12) + ',' + QByteArray::number(y, 'g', 12) + ',' +
                    QByteArray::number(count, 'g', 17) + '\n';
        }
    }
    return text;
}

QByteArray toNpy(const Snapshot& snapshot)
{
    QByteArray header = "{'descr': '<f8', 'fortran_order': False, 'shape': (" +
                        QByteArray::number(snapshot.size.rows) + ", " +
                        QByteArray::number(snapshot.size.columns) + "), }";
    // The array starts at a multiple of 64 bytes, after the magic, the length and a line end.
    constexpr int before = 10, alignment = 64;
    header += QByteArray(alignment - 1 - (before + header.size()) % alignment, ' ') + '\n';
    QByteArray bytes("\x93NUMPY\x01\x00", 8);
    bytes += static_cast<char>(header.size() & 0xff);
    bytes += static_cast<char>(header.size() >> 8);
    bytes += header;
    const int start = int(bytes.size());
    bytes.resize(start + static_cast<int>(snapshot.counts.size() * sizeof(double)));
    qToLittleEndian<double>(snapshot.counts.data(), static_cast<qsizetype>(snapshot.counts.size()),
                            bytes.data() + start);
    return bytes;
}

CountRange rangeOf(const Snapshot& snapshot)
{
    CountRange range;
    for (const double count : snapshot.counts) {
        if (!(count >= CountRange::leastSeen))
            continue;
        range.least = range.least > 0.0 ? std::min(range.least, count) : count;
        range.most = std::max(range.most, count);
    }
    return range;
}

namespace {

/// Colours of counts, looked up by the leading bits of their single precision: 256 to an octave,
/// which is as fine as colours are, and many times faster than a logarithm a cell.
class ColorTable
{
public:
    ColorTable(const CountRange& range, const ColorMapping& mapping)
        : m_first(keyOf(range.least))
    {
        constexpr int steps = 1023;
        std::vector<QRgb> colors;
        for (int step = 0; step <= steps; ++step)
            colors.push_back(mapping.colorAt(static_cast<double>(step) / steps));
        for (std::uint32_t key = m_first; key <= keyOf(range.most); ++key) {
            const std::uint32_t bits = ((key + 1) << droppedBits) - 1;
            float highest = 0.0F;
            std::memcpy(&highest, &bits, sizeof highest);
            const double count = std::min(static_cast<double>(highest), range.most);
            const double part = mapping.partOf(count, range.least, range.most);
            m_colors.push_back(colors[static_cast<std::size_t>(part * steps)]);
        }
    }
    /// @param count  within the range.
    QRgb at(double count) const { return m_colors[keyOf(count) - m_first]; }

private:
    static constexpr int droppedBits = 15;
    static std::uint32_t keyOf(double count)
    {
        const auto single = static_cast<float>(count);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &single, sizeof bits);
        return bits >> droppedBits;
    }

    std::uint32_t m_first;
    std::vector<QRgb> m_colors;
};

} // namespace

QImage toImage(const Snapshot& snapshot, const ColorMapping& mapping)
{
    QImage image(snapshot.size.columns, snapshot.size.rows, QImage::Format_ARGB32_Premultiplied);
    const ColorTable colors(rangeOf(snapshot), mapping);
    const double* count = snapshot.counts.data();
    for (int row = 0; row < snapshot.size.rows; ++row) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(snapshot.size.rows - 1 - row));
        for (int column = 0; column < snapshot.size.columns; ++column, ++count)
            line[column] = *count >= CountRange::leastSeen ? colors.at(*count) : 0U;
    }
    return image;
}

} // namespace density
