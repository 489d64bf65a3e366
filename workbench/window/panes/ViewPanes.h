// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLayout.h"
#include "platform/values/Persistant.h"

#include <QAction>
#include <QSplitter>

#include <deque>
#include <functional>

class PaneNote;
class ReadingTable;
class QMenu;

/// The views of the window: one across the top, the others side by side below. Each can be hidden,
/// which is remembered, and the others take its room; one is left.
class ViewPanes : public QSplitter, public values::PersistantOwner
{
    Q_OBJECT
public:
    /// What can be shown in the place of a view.
    struct Cover
    {
        QWidget* widget = nullptr;
        /// Paints it into a picture.
        std::function<void(QPainter& painter, const QSize& size)> render;
        /// Its data in a format of a file, by its ending; empty where it has none.
        std::function<QByteArray(const QString& ending)> data;
        /// What it shows, in the place of what the view does: see setMode.
        QStringList mode{QString()};
    };

    struct Pane
    {
        const char* name; ///< of its setting and of its picture
        QAction* showing; ///< hides and shows it; Ctrl+1 for the first pane, and so on
        GLLayout* view;
        QMenu* menu;     ///< the view's own
        QWidget* canvas; ///< is painted with each picture of the view
        /// What the view does, as in VCGLTimeDiagram.
        std::function<QRect(const QSize& size)> plotRect;
        std::function<void(QPainter& painter, const QSize& size)> render;
        std::function<void(const QString& text)> setCaptionNote;
        std::function<void(bool paused)> setPaused;
        std::function<bool()> isPaused;
        bool isShown = true;
        bool isIdle = false;
        QString mode = QString();         ///< beside its title
        PaneNote* note = nullptr;         ///< over the empty view
        QWidget* frame = nullptr;         ///< holds the view and what is below it
        ReadingTable* readings = nullptr; ///< below the view
        const Cover* cover = nullptr;     ///< in the place of the view, below its caption bar
        /// What is below the cover, in the place of the readings.
        ReadingTable* coverReadings = nullptr;
        PaneNote* coverNote = nullptr;
    };

    explicit ViewPanes(QWidget* parent);
    ~ViewPanes() override;

    /// Makes a pane with a new view; the first one is at the top.
    /// @param name       static text.
    /// @param title      as in a menu.
    /// @param render     paints the view into a picture.
    template<class View>
    View* add(const char* name, const QString& title,
              void (View::*render)(QPainter&, const QSize&) = &View::RenderPicture)
    {
        auto* view = new View(parentWidget()); // until the splitter owns it
        // "ForStart" comes when the user pauses, "ForStop" when the user resumes.
        connect(view, &View::StopButtonPressedForStart, this, &ViewPanes::paused);
        connect(view, &View::StopButtonPressedForStop, this, &ViewPanes::resumed);
        add({name, new QAction(title, this), view, view->GetDiagramMenu(), view->GetCanvas(),
             [view](const QSize& size) { return view->GetPlotRect(size); },
             [view, render](QPainter& painter, const QSize& size) {
                 (view->*render)(painter, size);
             },
             [view](const QString& text) { view->SetCaptionNote(text); },
             [view](bool paused) { view->SetPaused(paused); },
             [view] { return view->IsPaused(); }});
        return view;
    }
    /// Shows the panes as they were left.
    void restore();
    const std::deque<Pane>& panes() const { return m_panes; }
    /// How the panes share their room, in pixels, and to share it so again; anything else changes
    /// nothing.
    QVariantList room() const;
    void setRoom(const QVariantList& room);
    /// Shows all panes, for as long as none is hidden or shown by its action.
    void showAll();
    /// What an empty view waits for, and what one shows; empty texts say nothing.
    /// @param index     of the pane.
    /// @param isVeiled  the view shows old data.
    void setNote(std::size_t index, const QString& text, bool isVeiled = false);
    /// @param variants  of one text, the longest first: the first that fits is shown. At least one,
    ///                  but for a view with a cover, which has its own.
    void setMode(std::size_t index, const QStringList& variants);
    /// A view that has nothing to show, but says why: it leaves its room to the others.
    void setIdle(std::size_t index, bool isIdle);
    /// Puts a table below a view.
    void setReadings(std::size_t index, ReadingTable* table);
    /// Shows something in the place of a view, which keeps its caption bar, from now on.
    /// @param cover     null: the view itself again.
    /// @param readings  below it; null: those of the view. Deleted with the cover.
    void setCover(std::size_t index, const Cover* cover, ReadingTable* readings);
    /// Hides and shows those below the views, which is remembered.
    QAction& showingReadings() { return *m_showingReadings; }
    /// Pauses or resumes all views, as their buttons do.
    void setPaused(bool paused);
    /// Lets the views take what work plays, also if they are paused, and still are afterwards;
    /// neither is signalled.
    void showWhilePaused(const std::function<void()>& work);
    /// Index of the pane with the keyboard focus, or of the first one.
    std::size_t focused() const;
    /// The first pane that is shown.
    const Pane& firstShown() const;

signals:
    void paused();
    void resumed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeCover(const Pane& pane);
    void ApplyPersistantBeforeWrite() override;
    void ApplyPersistantAfterRead() override;
    void add(const Pane& pane);
    void arrange();
    /// Whether a view below the first one has something to show, or is idle.
    bool worksBelow() const;
    bool restsBelow() const;
    bool isLow() const;    ///< all below are, as none of them works
    bool isNarrow() const; ///< those that are idle are, beside one that works
    void shrinkIdle();

    std::deque<Pane> m_panes; // their settings have addresses
    QSplitter* m_below;
    QList<int> m_heights; // of the last room that was set: it comes back...
    QList<int> m_widths;  // ...when nothing is low or narrow any more
    QAction* m_showingReadings;
    bool m_showsReadings = true;
};
