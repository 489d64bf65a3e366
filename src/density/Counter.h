// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "density/ErrorVectors.h"
#include "density/KeptSignal.h"
#include "foundations/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace density {

class MaskTest;

/// Counts the traces of an eye or the points of a constellation, one a symbol, into pictures: one
/// of the home window, which is always counted, and on request one of a part of it, the zoom. The
/// zoom starts with the symbols that are kept raw, counted anew, and then counts new symbols.
///
/// Counting anew rather than a map of several resolutions: any zoom shows all detail, in memory
/// that does not depend on it; the price, of the newest symbols only.
///
/// Memory: that of KeptSignal and of two HitMaps. For one thread at a time; CountingThread has a
/// thread of its own for it.
class ORVANE_API Counter
{
public:
    static constexpr std::size_t leastKept = 100000;
    static constexpr std::size_t mostKept = 2000000;
    static constexpr std::size_t mostKeptBytes = std::size_t{512} << 20;

    /// What is counted, and into which picture.
    struct Settings
    {
        std::optional<TraceShape> shape = TraceShape(); ///< none: points of I and Q
        GridSize size;
        Window home;
        Persistence persistence;
        /// Number of symbols that are kept raw, clamped to leastKept up to mostKept and
        /// mostKeptBytes.
        std::size_t kept = leastKept;
    };
    /// A symbol that touched a cell.
    struct Hit
    {
        std::int64_t symbol; ///< number in the signal, as given
        std::size_t age;     ///< number of symbols kept after it: 0 for the newest
    };

    /// Settings that cannot be used are replaced by the default ones.
    explicit Counter(const Settings& settings);
    ~Counter();

    /// Counts one trace or point.
    /// @param samples  a trace, or I and Q; read during the call. A trace or point is left out as
    ///                 torn when its number of samples is not that of the shape (2 for a point), or
    ///                 when it has no good sample; a point needs two good ones.
    /// @param symbol   number in the signal.
    void add(const float* samples, std::size_t count, std::int64_t symbol);
    /// Adds symbols that the caller left out to the count of torn ones.
    void addTorn(std::int64_t count);
    /// Forgets all symbols, also the kept ones, and the counts of what was left out.
    void clear();

    // Each of these operations counts the kept symbols anew. A setting that cannot be used is
    // ignored.
    void setHome(const Window& home, const GridSize& size);
    void setHome(const Window& home) { setHome(home, m_settings.size); }
    /// Sets the zoom; none ends it.
    /// @param size  of its picture; none: as many cells as the home.
    void setZoom(const std::optional<Window>& zoom, const std::optional<GridSize>& size = {});
    /// Sets the size of the pictures of home and zoom.
    void setSize(const GridSize& size);
    void setPersistence(const Persistence& persistence);
    /// Whether all symbols of the home are kept, so that it can be counted anew without losing any.
    bool keepsAll() const;

    /// Sets the mask test, which starts with the kept symbols; null for none. Points are not
    /// tested.
    void setMaskTest(std::unique_ptr<MaskTest> test);
    const MaskTest* maskTest() const { return m_maskTest.get(); }

    /// Sets the ideal points of the constellation: error vectors are measured for the kept points
    /// and all later ones. Ignored for traces.
    void setIdeal(const std::vector<std::complex<double>>& ideal);
    const ErrorVectors& errorVectors() const { return m_errors; }

    const Settings& settings() const { return m_settings; }
    std::int64_t allSymbols() const { return m_allSymbols; } ///< since the last clear
    const LeftOut& leftOut() const { return m_leftOut; }     ///< likewise
    const std::optional<Window>& zoom() const { return m_zoomed; }
    /// A snapshot of the zoom or, without one, of the home.
    SnapshotPtr snapshot();
    /// A snapshot of the home.
    SnapshotPtr homeSnapshot();
    const KeptSignal& kept() const { return m_kept; }

    /// The newest kept symbols that touch a cell, the newest first.
    /// @param window,size  of the picture with the cell; no hits where one is not usable.
    std::vector<Hit> hits(const Window& window, const GridSize& size, int column, int row,
                          std::size_t most) const;

private:
    struct View;

    std::size_t itemLength() const;
    std::unique_ptr<View> makeView(const Window& window, const GridSize& size) const;
    void countAnew(std::unique_ptr<View>& view);
    void addTo(View& view, const float* samples, double exponent);
    void trim(View& view);
    SnapshotPtr snapshotOf(View& view) const;

    Settings m_settings;
    KeptSignal m_kept;
    std::optional<Window> m_zoomed;
    std::unique_ptr<View> m_home, m_zoom;
    std::unique_ptr<MaskTest> m_maskTest;
    ErrorVectors m_errors;
    std::int64_t m_allSymbols = 0;
    LeftOut m_leftOut;
};

} // namespace density
