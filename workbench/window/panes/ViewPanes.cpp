// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/ViewPanes.h"

#include "workbench/window/panes/PaneNote.h"
#include "workbench/window/panes/ReadingTable.h"

#include <QApplication>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace {

constexpr int topPart = 2; // of the height
constexpr int belowPart = 3;
constexpr int idleLines = 9; // of a view that has nothing to show
constexpr int idleLetters = 32;

void prepare(QSplitter& splitter)
{
    splitter.setChildrenCollapsible(false);
    splitter.setHandleWidth(1);
}

/// A pane that was hidden gets as much as the others on average, for when it is shown.
/// @param usual  of all panes, where none had a size yet.
void share(QSplitter& splitter, QList<int> sizes, const QList<int>& usual)
{
    const auto hiddenCount = sizes.count(0);
    if (hiddenCount == sizes.size()) {
        splitter.setSizes(usual);
        return;
    }
    const int mean =
        std::accumulate(sizes.begin(), sizes.end(), 0) / int(sizes.size() - hiddenCount);
    std::replace(sizes.begin(), sizes.end(), 0, mean);
    splitter.setSizes(sizes);
}

} // namespace

ViewPanes::ViewPanes(QWidget* parent)
    : QSplitter(Qt::Vertical, parent)
    , m_below(new QSplitter(Qt::Horizontal, this))
    , m_showingReadings(new QAction(tr("&Measurements"), this))
{
    prepare(*this);
    prepare(*m_below);
    setStretchFactor(0, belowPart);
    m_pPersistant = new values::Persistant(QStringLiteral("Views"), this);
    m_pPersistant->Add(&m_showsReadings, QStringLiteral("Readings"), true);
    m_showingReadings->setCheckable(true);
    m_showingReadings->setShortcut(Qt::Key_M);
    connect(m_showingReadings, &QAction::triggered, this, [this](bool shown) {
        m_showsReadings = shown;
        arrange();
        m_pPersistant->Write(QString(), ICfg::DefaultView);
    });
}

ViewPanes::~ViewPanes()
{
    delete m_pPersistant;
    m_pPersistant = nullptr;
}

void ViewPanes::add(const Pane& pane)
{
    m_panes.push_back(pane);
    Pane& added = m_panes.back();
    // A canvas of its own would cover what lies on the view.
    const int top = added.canvas == added.view ? added.plotRect(added.view->sizeHint()).top() : 0;
    added.note = new PaneNote(added.canvas, top);
    added.frame = new QWidget(this);
    auto* column = new QVBoxLayout(added.frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(added.view, 1);
    const int number = static_cast<int>(m_panes.size());
    if (number == 1) {
        insertWidget(0, added.frame);
        setStretchFactor(0, topPart);
    } else {
        m_below->addWidget(added.frame);
        m_below->setStretchFactor(number - 2, 1);
    }
    added.showing->setCheckable(true);
    added.showing->setChecked(true);
    added.showing->setShortcut(Qt::CTRL | Qt::Key(Qt::Key_0 + number));
    connect(added.showing, &QAction::triggered, this, [this, &added](bool shown) {
        added.isShown = shown;
        arrange();
        m_pPersistant->Write(QString(), ICfg::DefaultView);
    });
    m_pPersistant->Add(&added.isShown, QString::fromLatin1(added.name), true);
    arrange();
}

void ViewPanes::restore() { m_pPersistant->Read(QString(), ICfg::DefaultView); }

QVariantList ViewPanes::room() const
{
    QVariantList room;
    for (const int size :
         (isLow() ? m_heights : sizes()) + (isNarrow() ? m_widths : m_below->sizes()))
        room += size;
    return room;
}

void ViewPanes::setRoom(const QVariantList& room)
{
    constexpr int most = 100000; // pixels
    QList<int> sizes;
    for (const QVariant& size : room)
        sizes += qBound(0, size.toInt(), most);
    if (sizes.size() != count() + m_below->count())
        return;
    m_heights = sizes.mid(0, count());
    m_widths = sizes.mid(count());
    share(*this, m_heights, {topPart * most, belowPart * most});
    share(*m_below, m_widths, {most, most});
}

void ViewPanes::ApplyPersistantBeforeWrite() {}

void ViewPanes::ApplyPersistantAfterRead() { arrange(); }

void ViewPanes::showAll()
{
    for (Pane& pane : m_panes)
        pane.isShown = true;
    arrange();
}

void ViewPanes::arrange()
{
    const auto isShown = [](const Pane& pane) { return pane.isShown; };
    const auto shownCount = std::count_if(m_panes.begin(), m_panes.end(), isShown);
    if (shownCount == 0)
        m_panes.front().isShown = true;
    m_showingReadings->setChecked(m_showsReadings);
    for (const Pane& pane : m_panes) {
        pane.frame->setVisible(pane.isShown);
        const bool showsReadings = m_showsReadings && !pane.isIdle;
        if (pane.readings)
            pane.readings->setVisible(showsReadings && !pane.coverReadings);
        if (pane.coverReadings)
            pane.coverReadings->setVisible(showsReadings);
        if (pane.cover)
            pane.cover->widget->setVisible(!pane.isIdle);
        pane.showing->setChecked(pane.isShown);
        pane.showing->setEnabled(!pane.isShown || shownCount > 1);
    }
    m_below->setVisible(std::any_of(m_panes.begin() + 1, m_panes.end(), isShown));
    shrinkIdle();
}

void ViewPanes::setIdle(std::size_t index, bool isIdle)
{
    Pane& pane = m_panes.at(index);
    if (pane.isIdle == isIdle)
        return;
    const QVariantList before = room();
    pane.isIdle = isIdle;
    arrange();
    setRoom(before); // as far as what is idle lets it
}

bool ViewPanes::worksBelow() const
{
    return std::any_of(m_panes.begin() + 1, m_panes.end(),
                       [](const Pane& pane) { return pane.isShown && !pane.isIdle; });
}

bool ViewPanes::restsBelow() const
{
    return std::any_of(m_panes.begin() + 1, m_panes.end(),
                       [](const Pane& pane) { return pane.isShown && pane.isIdle; });
}

bool ViewPanes::isLow() const { return restsBelow() && !worksBelow() && m_panes.front().isShown; }

bool ViewPanes::isNarrow() const { return restsBelow() && worksBelow(); }

void ViewPanes::shrinkIdle()
{
    const QFontMetrics metrics(font());
    const int height = isLow() ? idleLines * metrics.lineSpacing() : QWIDGETSIZE_MAX;
    const int width = isNarrow() ? idleLetters * metrics.averageCharWidth() : QWIDGETSIZE_MAX;
    for (auto pane = m_panes.begin() + 1; pane != m_panes.end(); ++pane)
        pane->frame->setMaximumSize(pane->isIdle ? width : QWIDGETSIZE_MAX, height);
    m_below->refresh(); // its own limits, which sizes that are set now have to keep
}

void ViewPanes::setNote(std::size_t index, const QString& text, bool isVeiled)
{
    const Pane& pane = m_panes.at(index);
    // Labels of an axis without a signal would only be in the way.
    const auto veil = pane.isIdle ? PaneNote::Veil::Whole
                      : isVeiled  ? PaneNote::Veil::Dim
                                  : PaneNote::Veil::None;
    pane.note->say(text, veil);
    if (pane.coverNote)
        pane.coverNote->say(text, veil);
}

void ViewPanes::setReadings(std::size_t index, ReadingTable* table)
{
    Pane& pane = m_panes.at(index);
    pane.readings = table;
    pane.frame->layout()->addWidget(table);
    arrange();
}

void ViewPanes::setCover(std::size_t index, const Cover* cover, ReadingTable* readings)
{
    Pane& pane = m_panes.at(index);
    delete pane.coverReadings;
    delete pane.coverNote;
    pane.cover = cover;
    pane.coverReadings = readings;
    pane.coverNote = nullptr;
    pane.view->removeEventFilter(this);
    if (cover) {
        QWidget& widget = *cover->widget;
        widget.setParent(pane.view);
        widget.setAttribute(Qt::WA_NoMousePropagation); // the view below is not seen
        pane.coverNote = new PaneNote(&widget, 0);
        pane.view->installEventFilter(this);
        placeCover(pane);
        widget.raise();
    }
    if (readings)
        pane.frame->layout()->addWidget(readings);
    arrange();
}

void ViewPanes::placeCover(const Pane& pane)
{
    const int top = pane.view->focusProxy()->height(); // the caption bar
    pane.cover->widget->setGeometry(pane.view->rect().adjusted(0, top, 0, 0));
}

bool ViewPanes::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPlaced = event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                          event->type() == QEvent::ChildAdded;
    for (const Pane& pane : m_panes) {
        if (!isPlaced || pane.view != watched || !pane.cover)
            continue;
        placeCover(pane);
        // A canvas of the view may come above it yet.
        QMetaObject::invokeMethod(pane.cover->widget, &QWidget::raise, Qt::QueuedConnection);
    }
    return QSplitter::eventFilter(watched, event);
}

void ViewPanes::setMode(std::size_t index, const QStringList& variants)
{
    Pane& pane = m_panes.at(index);
    const QStringList shown = pane.cover ? pane.cover->mode : variants;
    pane.mode = shown.front();
    pane.setCaptionNote(shown.join(QChar(0x9c)));
}

void ViewPanes::setPaused(bool paused)
{
    for (const Pane& pane : m_panes)
        pane.setPaused(paused);
}

void ViewPanes::showWhilePaused(const std::function<void()>& work)
{
    const QSignalBlocker quiet(this);
    const bool arePaused = m_panes.front().isPaused();
    setPaused(false);
    work();
    setPaused(arePaused);
}

std::size_t ViewPanes::focused() const
{
    const auto hasFocus = [](const Pane& pane) {
        return pane.view->isAncestorOf(QApplication::focusWidget());
    };
    const auto found = std::find_if(m_panes.begin(), m_panes.end(), hasFocus);
    return found == m_panes.end() ? 0 : static_cast<std::size_t>(found - m_panes.begin());
}

const ViewPanes::Pane& ViewPanes::firstShown() const
{
    return *std::find_if(m_panes.begin(), m_panes.end(),
                         [](const Pane& pane) { return pane.isShown; });
}
