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

QImage toImage(const Snapshot& snapshot, const ColorMapping& mapping)
{
    QImage image(snapshot.size.columns, snapshot.size.rows, QImage::Format_ARGB32_Premultiplied);
    const CountRange range = rangeOf(snapshot);
    constexpr int steps = 1023;
    std::vector<QRgb> colors;
    for (int step = 0; step <= steps; ++step)
        colors.push_back(mapping.colorAt(static_cast<double>(step) / steps));
    for (int row = 0; row < snapshot.size.rows; ++row) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(snapshot.size.rows - 1 - row));
        for (int column = 0; column < snapshot.size.columns; ++column) {
            const double count = snapshot.at(column, row);
            const double part = mapping.partOf(count, range.least, range.most);
            line[column] = count >= CountRange::leastSeen
                               ? colors[static_cast<std::size_t>(part * steps)]
                               : 0U;
        }
    }
    return image;
}

} // namespace density
