// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Counter.h"

#include "density/HitMap.h"
#include "density/MaskTest.h"
#include "density/TraceRaster.h"

#include <algorithm>
#include <cmath>

namespace density {

namespace {

// Weights of a fading picture grow from symbol to symbol, up to 2 to this power.
constexpr double highestExponent = 600.0;

bool isUsable(const Persistence& persistence)
{
    return persistence.kind == Persistence::Kind::Infinite ||
           (std::isfinite(persistence.symbols) && persistence.symbols >= 1.0);
}

Counter::Settings usable(Counter::Settings settings)
{
    const Counter::Settings standard;
    if (settings.shape && !settings.shape->isUsable())
        settings.shape = standard.shape;
    if (!settings.size.isUsable())
        settings.size = standard.size;
    if (!settings.home.isUsable())
        settings.home = standard.home;
    if (!isUsable(settings.persistence))
        settings.persistence = standard.persistence;
    const auto length = settings.shape ? static_cast<std::size_t>(settings.shape->sampleCount) : 2;
    const std::size_t bytes = length * sizeof(float) + sizeof(std::int64_t);
    const std::size_t most = std::min(Counter::mostKept, Counter::mostKeptBytes / bytes);
    settings.kept = std::clamp(settings.kept, Counter::leastKept, most);
    return settings;
}

std::unique_ptr<Raster> makeRaster(const std::optional<TraceShape>& shape, const Window& window,
                                   const GridSize& size)
{
    if (shape)
        return std::make_unique<TraceRaster>(*shape, window, size);
    return std::make_unique<PointRaster>(window, size);
}

} // namespace

/// A picture that is counted.
struct Counter::View
{
    Window window;
    GridSize size;
    std::unique_ptr<Raster> raster;
    HitMap map;
    std::int64_t symbolCount = 0;
    double exponent = 0.0; // the newest symbol weighs 2 to this power
};

Counter::Counter(const Settings& settings)
    : m_settings(usable(settings))
    , m_kept(itemLength(), m_settings.kept)
    , m_home(makeView(m_settings.home, m_settings.size))
{}

Counter::~Counter() = default;

std::size_t Counter::itemLength() const
{
    return m_settings.shape ? static_cast<std::size_t>(m_settings.shape->sampleCount) : 2;
}

std::unique_ptr<Counter::View> Counter::makeView(const Window& window, const GridSize& size) const
{
    return std::unique_ptr<View>(
        new View{window, size, makeRaster(m_settings.shape, window, size), HitMap(size)});
}

void Counter::add(const float* samples, std::size_t count, std::int64_t symbol)
{
    std::size_t bad = 0;
    if (count == itemLength())
        bad = TraceRaster::badSamplesOf(samples, count);
    m_leftOut.badSamples += static_cast<std::int64_t>(bad);
    if (count != itemLength() || bad == count || (!m_settings.shape && bad > 0)) {
        ++m_leftOut.tornTraces;
        return;
    }
    for (View* view : {m_home.get(), m_zoom.get()}) {
        if (view) {
            trim(*view);
            addTo(*view, samples, view->exponent);
        }
    }
    m_kept.add(samples, symbol);
    ++m_allSymbols;
    if (m_maskTest)
        m_maskTest->add(samples, symbol);
    if (!m_settings.shape)
        m_errors.add(samples[0], samples[1]);
}

void Counter::addTorn(std::int64_t count)
{
    m_leftOut.tornTraces += std::max<std::int64_t>(count, 0);
}

// Takes the oldest out of the picture where one more would be too many.
void Counter::trim(View& view)
{
    if (m_settings.persistence.kind != Persistence::Kind::Newest)
        return;
    const double wanted =
        std::min(m_settings.persistence.symbols, static_cast<double>(m_kept.capacity()));
    const auto most = static_cast<std::int64_t>(wanted);
    if (view.symbolCount < most)
        return;
    view.map.count(view.raster->take(m_kept.at(static_cast<std::size_t>(most - 1))), -1);
    --view.symbolCount;
}

void Counter::addTo(View& view, const float* samples, double exponent)
{
    ++view.symbolCount;
    const Cells& cells = view.raster->take(samples);
    if (m_settings.persistence.kind != Persistence::Kind::Fading) {
        view.map.count(cells, 1);
        return;
    }
    exponent += 1.0 / m_settings.persistence.symbols;
    if (exponent > highestExponent) {
        view.map.fade(std::exp2(-exponent));
        exponent = 0.0;
    }
    view.exponent = exponent;
    view.map.weigh(cells, std::exp2(exponent));
}

void Counter::clear()
{
    m_kept.clear();
    m_allSymbols = 0;
    m_leftOut = LeftOut();
    if (m_maskTest)
        m_maskTest->restart();
    m_errors.clear();
    countAnew(m_home);
    if (m_zoom)
        countAnew(m_zoom);
}

void Counter::countAnew(std::unique_ptr<View>& view)
{
    view = makeView(view->window, view->size);
    std::size_t count = m_kept.count();
    if (m_settings.persistence.kind == Persistence::Kind::Newest)
        count = static_cast<std::size_t>(
            std::min(m_settings.persistence.symbols, static_cast<double>(count)));
    while (count-- > 0)
        addTo(*view, m_kept.at(count), view->exponent);
}

void Counter::setHome(const Window& home, const GridSize& size)
{
    if (!home.isUsable() || !size.isUsable() ||
        (home == m_settings.home && size == m_settings.size))
        return;
    m_settings.home = home;
    m_settings.size = size;
    m_home = makeView(home, size);
    countAnew(m_home);
}

void Counter::setZoom(const std::optional<Window>& zoom, const std::optional<GridSize>& size)
{
    const GridSize wanted = size.value_or(m_settings.size);
    const bool isShown = m_zoom && zoom == m_zoomed && wanted == m_zoom->size;
    if ((zoom && !zoom->isUsable()) || !wanted.isUsable() || isShown)
        return;
    m_zoomed = zoom;
    m_zoom.reset();
    if (zoom) {
        m_zoom = makeView(*zoom, wanted);
        countAnew(m_zoom);
    }
}

void Counter::setSize(const GridSize& size)
{
    setHome(m_settings.home, size);
    setZoom(m_zoomed, size);
}

bool Counter::keepsAll() const
{
    return m_allSymbols == static_cast<std::int64_t>(m_kept.count()) ||
           m_settings.persistence.kind == Persistence::Kind::Newest;
}

void Counter::setPersistence(const Persistence& persistence)
{
    if (!isUsable(persistence) || persistence == m_settings.persistence)
        return;
    m_settings.persistence = persistence;
    countAnew(m_home);
    if (m_zoom)
        countAnew(m_zoom);
}

void Counter::setMaskTest(std::unique_ptr<MaskTest> test)
{
    m_maskTest = m_settings.shape ? std::move(test) : nullptr;
    for (std::size_t age = m_kept.count(); m_maskTest && age-- > 0;)
        m_maskTest->add(m_kept.at(age), m_kept.symbolAt(age));
}

void Counter::setIdeal(const std::vector<std::complex<double>>& ideal)
{
    m_errors = ErrorVectors(ideal);
    for (std::size_t age = m_kept.count(); !m_settings.shape && age-- > 0;)
        m_errors.add(m_kept.at(age)[0], m_kept.at(age)[1]);
}

SnapshotPtr Counter::snapshot() { return snapshotOf(m_zoom ? *m_zoom : *m_home); }

SnapshotPtr Counter::homeSnapshot() { return snapshotOf(*m_home); }

SnapshotPtr Counter::snapshotOf(View& view) const
{
    return std::make_shared<const Snapshot>(Snapshot{view.window, view.size,
                                                     view.map.counts(std::exp2(-view.exponent)),
                                                     view.symbolCount, m_allSymbols, m_leftOut});
}

std::vector<Counter::Hit> Counter::hits(const Window& window, const GridSize& size, int column,
                                        int row, std::size_t most) const
{
    std::vector<Hit> found;
    if (!window.isUsable() || !size.isUsable())
        return found;
    const std::unique_ptr<Raster> raster = makeRaster(m_settings.shape, window, size);
    for (std::size_t age = 0; age < m_kept.count() && found.size() < most; ++age) {
        if (raster->touches(m_kept.at(age), column, row))
            found.push_back({m_kept.symbolAt(age), age});
    }
    return found;
}

} // namespace density
