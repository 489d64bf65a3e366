// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "foundations/Export.h"

#include <QByteArray>
#include <QImage>

namespace density {

struct ColorMapping;

/// The counts above 0 as text: after a line of names, a line of the middle of the cell and its
/// count: x (symbols, or I), y (level, or Q), count. In the order of the snapshot.
ORVANE_API QByteArray toCsv(const Snapshot& snapshot);

/// All counts as a file of NumPy's format 1.0 (.npy): an array of doubles, rows by columns, row 0
/// at the bottom. (NumPy Enhancement Proposal 1)
ORVANE_API QByteArray toNpy(const Snapshot& snapshot);

/// A picture with one pixel for each cell, top row first; cells without counts are transparent.
ORVANE_API QImage toImage(const Snapshot& snapshot, const ColorMapping& mapping);

/// Smallest and largest count that is shown; both 0 when there is none.
struct CountRange
{
    static constexpr double leastSeen = 0.01; ///< of symbols that have faded

    double least = 0.0, most = 0.0;
};
ORVANE_API CountRange rangeOf(const Snapshot& snapshot);

} // namespace density
