// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/Densities.h"

#include "platform/values/Settings.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/player/Player.h"
#include "workbench/window/density/MaskChoice.h"
#include "workbench/window/density/TimeMark.h"
#include "workbench/window/density/WayBack.h"
#include "workbench/window/menus/DensityMenu.h"
#include "workbench/window/menus/MaskMenu.h"
#include "workbench/window/panels/DensityPanel.h"
#include "workbench/window/panels/ParameterDock.h"
#include "workbench/window/panes/ReadingTable.h"

#include <QAction>
#include <QLocale>
#include <QMainWindow>

namespace {

constexpr std::size_t eyePane = 1;
constexpr std::size_t iqPane = 2;
const QString eyeKey = QStringLiteral("Density/Eye");
const QString iqKey = QStringLiteral("Density/IQ");

} // namespace

Densities::Densities(QMainWindow& window, Player& player, ViewPanes& panes, VCGLTimeDiagram& time,
                     ParameterDock& dock)
    : QObject(&panes)
    , m_player(player)
    , m_panes(panes)
    , m_figuring(new EyeFiguring(this))
    , m_eye(new DensityPane(DensityPane::Kind::Eye, panes, eyePane, player, this))
    , m_iq(new DensityPane(DensityPane::Kind::Constellation, panes, iqPane, player, this))
    , m_masks(new MaskChoice(*m_eye, this))
    , m_maskMenu(new MaskMenu(*m_masks, *m_eye, &window))
    , m_menu(new DensityMenu(window, *m_eye, *m_iq, *m_maskMenu))
    , m_mark(new TimeMark(time))
    , m_wayBack(new WayBack(player, panes, {m_eye, m_iq}, *m_mark, this))
    , m_dock(dock)
{
    connectPane(*m_eye);
    connectPane(*m_iq);
    connect(m_figuring, &EyeFiguring::figured, this, [this](const EyeFiguredPtr& figured) {
        m_figured = figured;
        m_masks->place(figured);
        showFigured();
    });
    connectMenu();
    connect(m_wayBack, &WayBack::changed, this, &Densities::refresh);
    connect(m_masks, &MaskChoice::changed, this, [this] {
        m_masks->place(m_figured);
        showMask();
    });
    connect(&dock.density(), &DensityPanel::chosen, this,
            [this](const DensityPanel::Settings& settings) {
                m_masks->chooseMargin(settings.margin);
                if (settings.stretch >= 0 && settings.stretch != m_wayBack->index())
                    m_wayBack->show(settings.stretch);
            });
}

void Densities::connectMenu()
{
    SignalFeed& feed = m_player.feed();
    connect(m_menu, &DensityMenu::switchWanted, this, &Densities::switchWanted);
    connect(m_menu, &DensityMenu::restartWanted, &feed, &SignalFeed::restartCounting);
    connect(&m_menu->cursors(), &QAction::toggled, this, [this](bool shown) {
        m_eye->showCursors(shown);
        m_iq->showCursors(shown);
    });
    connect(&m_menu->next(), &QAction::triggered, m_wayBack, &WayBack::showNext);
    connect(&m_menu->previous(), &QAction::triggered, m_wayBack, &WayBack::showPrevious);
    connect(m_maskMenu, &MaskMenu::refused, this, &Densities::refused);
    connect(m_maskMenu, &MaskMenu::hitsWanted, this, &Densities::showHits);
}

// The threads of the plots tell the figuring.
Densities::~Densities()
{
    delete m_eye;
    delete m_iq;
}

void Densities::connectPane(DensityPane& pane)
{
    connect(&pane, &DensityPane::switched, this, [this, &pane](bool on) {
        forget(pane);
        m_lines = 1;
        if (on)
            pane.setReadings(&pane == m_eye ? DensityReadings::makeEyeTable(m_lines)
                                            : DensityReadings::makePointTable());
        refresh();
        emit switched(pane);
    });
    connect(&pane.switching(), &QAction::triggered, this, &Densities::keep);
    connect(&pane, &DensityPane::restarted, this, [this, &pane] {
        forget(pane);
        show(pane);
    });
    connect(&pane, &DensityPane::updated, this, [this, &pane] { show(pane); });
    connect(&pane, &DensityPane::passed, this,
            [this, &pane](const QVector<qint64>& symbols, const QPointF& place) {
                const QString what =
                    QStringLiteral("%1, %2").arg(QLocale::c().toString(place.x(), 'g', 3),
                                                 QLocale::c().toString(place.y(), 'g', 3));
                m_wayBack->take(pane, symbols, what);
            });
}

/// What it measured is of other symbols than come.
void Densities::forget(const DensityPane& pane)
{
    if (&pane == m_iq)
        return;
    m_figuring->cancel();
    m_figured = nullptr;
}

void Densities::switchWanted()
{
    const std::size_t focused = m_panes.focused();
    const bool areOn = m_eye->isOn() && m_iq->isOn();
    for (DensityPane* pane : {m_eye, m_iq}) {
        if (focused == pane->index())
            pane->setOn(!pane->isOn());
        else if (focused != eyePane && focused != iqPane)
            pane->setOn(!areOn);
    }
    keep();
}

void Densities::keep()
{
    values::Settings settings;
    settings.setValue(eyeKey, m_eye->isOn());
    settings.setValue(iqKey, m_iq->isOn());
}

void Densities::restore()
{
    const values::Settings settings;
    m_eye->setOn(settings.value(eyeKey, false).toBool());
    m_iq->setOn(settings.value(iqKey, false).toBool());
}

void Densities::refresh()
{
    const SignalFeed& feed = m_player.feed();
    const auto symbolRate = feed.symbolRate();
    const bool isInSeconds = symbolRate && feed.scale().unit != TimeScale::Unit::Symbol;
    m_symbolSeconds = isInSeconds ? std::optional(1.0 / *symbolRate) : std::nullopt;
    m_readings.setUnits(feed.levelUnit(), m_symbolSeconds);
    for (DensityPane* pane : {m_eye, m_iq}) {
        if (pane->isOn())
            pane->plot()->setSymbolRate(symbolRate.value_or(0.0));
    }
    if (m_eye->isOn()) {
        m_eye->plot()->setUnit(feed.levelUnit());
        m_eye->plot()->setTimeUnit(isInSeconds ? density::DensityPlot::TimeUnit::Seconds
                                               : density::DensityPlot::TimeUnit::Symbols);
    }
    m_wayBack->refresh();
    m_dock.density().show(*m_wayBack);
    showFigured();
    showMask();
    m_menu->refresh(m_eye->isOn() || m_iq->isOn(), m_wayBack->stretches().size() > 1);
}

void Densities::show(DensityPane& pane)
{
    if (!pane.isOn() || !pane.readings())
        return;
    if (&pane == m_iq)
        return showPoints();
    m_readings.show(*pane.readings(), m_figured);
    if (m_masks->mask())
        showMask();
    const density::SnapshotPtr snapshot = pane.plot()->snapshot();
    if (snapshot && (!m_figured || m_figured->allSymbols != snapshot->allSymbols ||
                     m_figured->leftOut != snapshot->leftOut.tornTraces))
        m_figuring->request(*pane.plot());
}

/// What was clicked, or how the mask's test goes, or that it is a density.
void Densities::showModes()
{
    const QString way = m_wayBack->text(), mask = m_masks->text();
    const QString usual = tr("density of all symbols");
    const QStringList shorter{tr("density"), QString()};
    m_iq->setMode(QStringList{way.isEmpty() ? usual : way} + shorter);
    const QString tested = mask.isEmpty() ? usual : tr("mask: %1").arg(mask);
    QStringList eye{way.isEmpty() ? tested : mask.isEmpty() ? way : way + ", " + tested};
    if (!mask.isEmpty())
        eye += tested;
    m_eye->setMode(eye + shorter);
}

void Densities::showMask()
{
    m_dock.density().show(*m_masks);
    showModes();
}

/// The newest symbols that hit the mask, as if it had been clicked.
void Densities::showHits()
{
    if (!m_eye->isOn())
        return;
    QVector<qint64> symbols;
    for (const std::int64_t hit : m_eye->plot()->maskHits())
        symbols += hit;
    m_wayBack->take(*m_eye, symbols, tr("the mask"));
}

void Densities::showFigured()
{
    m_dock.density().show(m_figured, m_readings, m_symbolSeconds);
    if (!m_eye->isOn())
        return;
    const std::size_t lines = DensityReadings::lineCount(m_figured);
    if (lines != m_lines)
        m_eye->setReadings(DensityReadings::makeEyeTable(lines));
    m_lines = lines;
    show(*m_eye);
}

void Densities::showPoints()
{
    const density::SnapshotPtr snapshot = m_iq->plot()->snapshot();
    const std::int64_t count = snapshot ? snapshot->allSymbols : 0;
    const density::ErrorVectors::Figures errors = m_iq->plot()->errorVectors();
    if (m_dock.isDensitySeen())
        m_dock.density().showErrors(errors, m_readings);
    m_readings.show(*m_iq->readings(), errors, count, snapshot ? snapshot->leftOut.tornTraces : 0);
}

void Densities::settle()
{
    m_iq->settle();
    if (m_eye->isOn()) {
        m_eye->settle();
        m_figured = EyeFiguring::of(*m_eye->plot());
        m_masks->place(m_figured);
        if (m_masks->mask())
            m_eye->settle();
        showFigured();
        showMask();
    }
}

void Densities::autoScale()
{
    for (DensityPane* pane : {m_eye, m_iq}) {
        if (pane->isOn())
            pane->plot()->autoScale();
    }
}
