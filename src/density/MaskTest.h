// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/EyeFigures.h"
#include "density/Mask.h"
#include "foundations/Export.h"

#include <QRectF>

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace density {

/// Counts the symbols whose traces touch a mask; each counts once, however often it touches. Ends
/// with the last symbol of the mask's limit. For one thread at a time.
class ORVANE_API MaskTest
{
public:
    static constexpr std::size_t mostKeptHits = 1000;
    enum class Verdict {
        Running, ///< not enough symbols yet, and not too many hits
        Pass,
        Fail ///< as soon as there are too many hits
    };
    /// The state of the test.
    struct Result
    {
        Verdict verdict = Verdict::Running;
        std::int64_t symbolCount = 0;         ///< tested
        std::int64_t hitCount = 0;            ///< symbols that touched the mask
        std::vector<std::int64_t> byPolygon;  ///< likewise, each; their sum may be more
        std::vector<std::int64_t> newestHits; ///< numbers of symbols, the newest first
    };

    /// Where a mask stands in a signal, see Mask::placed.
    struct Place
    {
        double instant = 0.0, low = 0.0, high = 1.0;

        /// By what an eye was measured as: at the instant of decision or, for times from the
        /// crossing, half a symbol behind the mean of the crossings, if they were measured. None,
        /// with the reason, where levels are relative and no two were found.
        /// @param reason  may be null.
        ORVANE_API static std::optional<Place> of(const Mask& mask, const EyeFigures& figures,
                                                  Withheld* reason = nullptr);
    };

    /// @param mask  one that can be used; otherwise nothing is ever hit.
    /// @param instant,low,high  see Mask::placed.
    MaskTest(const Mask& mask, const TraceShape& shape, double instant, double low, double high);

    /// Tests a trace of the shape; bad samples break its line. Does nothing once the test has
    /// ended.
    /// @return whether it touches the mask.
    bool add(const float* trace, std::int64_t symbol);
    /// Starts the test anew.
    void restart();
    Result result() const;
    /// The polygons as they are tested, in the plane of time and level.
    const std::vector<QPolygonF>& polygons() const { return m_polygons; }

private:
    bool touches(const float* trace, std::size_t polygon) const;

    Mask m_mask;
    TraceShape m_shape;
    std::vector<QPolygonF> m_polygons;
    std::vector<QRectF> m_bounds;
    std::int64_t m_symbolCount = 0, m_hitCount = 0;
    std::vector<std::int64_t> m_byPolygon;
    std::deque<std::int64_t> m_newestHits;
};

} // namespace density
