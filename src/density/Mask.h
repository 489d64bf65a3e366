// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "foundations/Export.h"

#include <QByteArray>
#include <QMetaType>
#include <QPolygonF>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace density {

/// The areas through which no trace of an eye may pass: polygons in the plane of time and level.
struct ORVANE_API Mask
{
    enum class Levels {
        Absolute, ///< levels are the signal's
        Relative  ///< 0 is the lowest level that was found, 1 the highest
    };
    enum class Origin {
        Middle,  ///< times are from the instant of decision on
        Crossing ///< times are from the crossing before it on, half a symbol before the middle
    };

    static constexpr int mostPolygons = 64;
    static constexpr int mostPoints = 256; ///< of a polygon

    QString name;
    QString source; ///< where it is published; may be empty
    Levels levels = Levels::Relative;
    Origin origin = Origin::Middle;
    /// Times in symbols and levels, at least three points for each polygon; the last joins the
    /// first. The inside is that of the even-odd rule.
    std::vector<QPolygonF> polygons;
    /// Margin by which each polygon grows on all sides, or shrinks if negative: as a part of a
    /// symbol, and as a part of the distance from level 0 to 1, or in the signal's unit for
    /// absolute levels.
    double margin = 0.0;
    /// The test passes with up to so many hits...
    std::int64_t mostHits = 0;
    /// ...in so many symbols.
    std::int64_t symbolCount = 100000;

    /// Whether the mask can be tested: it is as described above, and all numbers are finite and
    /// within 1e6 of 0.
    bool isUsable() const;

    /// The JSON of docs/density.md, indented.
    QByteArray toJson() const;
    /// @param error  receives a sentence for the user when the result is empty; may be null.
    static std::optional<Mask> fromJson(const QByteArray& json, QString* error = nullptr);

    /// Masks after published standards. Their source says that their numbers were not compared with
    /// the standard's text.
    static const std::vector<Mask>& standard();

    /// The polygons with their margin in the plane of a signal: times from the middle of the
    /// traces.
    /// @param instant  of decision, from the middle of the traces on.
    /// @param low,high levels found; only relative masks use them.
    std::vector<QPolygonF> placed(double instant, double low, double high) const;
    /// The other way: the point of a polygon that is placed there, margin apart.
    /// @return not finite where levels are relative and both found are the same.
    QPointF pointAt(const QPointF& place, double instant, double low, double high) const;
};

} // namespace density

Q_DECLARE_METATYPE(density::Mask)
