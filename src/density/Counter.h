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
/// of the home window, which goes on whatever is looked at, and on request one of a part of it, the
/// zoom. The zoom starts with the symbols that are kept raw, counted anew, and
/// then takes what comes.
///
/// Counting anew rather than a map of several resolutions: any zoom shows all detail, in memory
/// that does not depend on it; the price, of the newest symbols only.
///
/// Memory: that of KeptSignal and of two HitMaps. Any one thread; CountingThread gives it one of
/// its own.
class ORVANE_API Counter
{
public:
    static constexpr std::size_t leastKept = 100000;
    static constexpr std::size_t mostKept = 2000000;
    static constexpr std::size_t mostKeptBytes = std::size_t{512} << 20;

    struct Settings
    {
        std::optional<TraceShape> shape = TraceShape(); ///< none: points of I and Q
        GridSize size;
        Window home;
        Persistence persistence;
        /// Symbols kept raw, taken as from leastKept up to mostKept and mostKeptBytes.
        std::size_t kept = leastKept;
    };
    /// Where a picture was touched.
    struct Hit
    {
        std::int64_t symbol; ///< number in the signal, as given
        std::size_t age;     ///< symbols kept since: 0 is the newest
    };

    /// Settings that cannot be used are those of Settings().
    explicit Counter(const Settings& settings);
    ~Counter();

    /// Counts one.
    /// @param samples  trace, or I and Q; read during the call. A number of samples that is not
    /// that
    ///                 of the shape (2 of a point), or no good one among them: left out as torn. A
    ///                 point with a bad sample has no good one.
    /// @param symbol   number in the signal.
    void add(const float* samples, std::size_t count, std::int64_t symbol);
    /// Counts what others left out as torn.
    void addTorn(std::int64_t count);
    /// Forgets all symbols, also the kept ones, and what was left out.
    void clear();

    // Each of these counts the kept symbols anew. What cannot be used changes nothing.
    void setHome(const Window& home, const GridSize& size);
    void setHome(const Window& home) { setHome(home, m_settings.size); }
    /// None ends it.
    /// @param size  of its picture; as many cells as the home has where there is none.
    void setZoom(const std::optional<Window>& zoom, const std::optional<GridSize>& size = {});
    /// Of home and zoom.
    void setSize(const GridSize& size);
    void setPersistence(const Persistence& persistence);
    /// Whether a home counted anew lacks no symbol: all are kept, or are in no picture any more.
    bool keepsAll() const;

    /// Has a test of its own from now on, which starts with the kept symbols; null for none. Points
    /// are not tested.
    void setMaskTest(std::unique_ptr<MaskTest> test);
    const MaskTest* maskTest() const { return m_maskTest.get(); }

    /// The points that those of the signal should be: error vectors of the kept ones and of all
    /// that come. Of traces there are none.
    void setIdeal(const std::vector<std::complex<double>>& ideal);
    const ErrorVectors& errorVectors() const { return m_errors; }

    const Settings& settings() const { return m_settings; }
    std::int64_t allSymbols() const { return m_allSymbols; } ///< since the last clear
    const std::optional<Window>& zoom() const { return m_zoomed; }
    /// The zoom as it stands or, without one, the home.
    SnapshotPtr snapshot();
    /// The home as it stands.
    SnapshotPtr homeSnapshot();
    const KeptSignal& kept() const { return m_kept; }

    /// The newest kept symbols that touch a cell, the newest first. None where nothing passed.
    /// @param window,size  of the picture with the cell: not usable, no hit.
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
