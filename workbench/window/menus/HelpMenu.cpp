// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/HelpMenu.h"

#include "platform/glbase/Renderer.h"
#include "workbench/sources/Libraries.h"
#include "workbench/window/density/DensityReadings.h"
#include "workbench/window/menus/MenuEntries.h"
#include "workbench/window/panes/Readings.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

QString heading(const QString& text)
{
    return QStringLiteral("<h3>%1</h3>").arg(text.toHtmlEscaped());
}

/// A table of names and their meanings.
class Table
{
public:
    void add(const QString& what, const QString& text)
    {
        m_rows += QStringLiteral("<tr><td style='white-space: nowrap; padding: 2px 18px 2px 0'>"
                                 "<b>%1</b></td><td style='padding: 2px 0'>%2</td></tr>")
                      .arg(what.toHtmlEscaped(), text.toHtmlEscaped());
    }
    QString html() const { return QStringLiteral("<table>%1</table>").arg(m_rows); }

private:
    QString m_rows;
};

} // namespace

HelpMenu::HelpMenu(QMainWindow& window)
    : QMenu(tr("&Help"), &window)
    , m_window(window)
{
    connect(menus::add(window, *this, tr("&Keys and mouse"), QKeySequence::HelpContents),
            &QAction::triggered, this, [this] { show(tr("Keys and mouse"), keys()); });
    connect(menus::add(window, *this, tr("What the &figures mean"), Qt::SHIFT | Qt::Key_F1),
            &QAction::triggered, this, [this] { show(tr("What the figures mean"), readings()); });
    addSeparator();
    connect(menus::add(window, *this, tr("&About"), QKeySequence()), &QAction::triggered, this,
            [this] { show(tr("About"), about()); });
}

void HelpMenu::show(const QString& title, const QString& page)
{
    constexpr QSize size(640, 560);
    auto* dialog = new QDialog(&m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    auto* browser = new QTextBrowser(dialog);
    browser->setHtml(page);
    browser->setAccessibleName(title);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(dialog);
    column->addWidget(browser);
    column->addWidget(buttons);
    dialog->resize(size);
    dialog->show(); // not modal: the window can be used
}

/// Taken from the menus, so that the help is true.
QString HelpMenu::menuKeys() const
{
    QString page;
    for (const QAction* entry : m_window.menuBar()->actions()) {
        Table table;
        bool isEmpty = true;
        for (const QAction* action : entry->menu()->actions()) {
            QStringList keys;
            for (const QKeySequence& key : action->shortcuts())
                keys += key.toString(QKeySequence::NativeText);
            if (keys.isEmpty())
                continue;
            table.add(keys.join(tr(" or ")), menus::plain(action->text()));
            isEmpty = false;
        }
        if (!isEmpty)
            page += heading(menus::plain(entry->text())) + table.html();
    }
    return page;
}

QString HelpMenu::keys() const
{
    Table views;
    views.add(tr("Click"), tr("Measures a point of the time diagram"));
    views.add(tr("Drag"), tr("Measures a distance in the time diagram"));
    views.add(tr("Esc"), tr("Clears what was measured; closes a message"));
    views.add(tr("Wheel over an axis"), tr("Zooms about the pointer"));
    views.add(tr("Drag on an axis"), tr("Moves what is shown"));
    views.add(tr("Double click on an axis"), tr("Shows all again"));
    views.add(tr("Right click"), tr("Menu of the view: axes, grid, colours, auto scaling, export"));
    Table densities;
    densities.add(tr("Click"), tr("Shows what passed there: lit, and marked over time"));
    densities.add(tr("Wheel"), tr("Zooms about the pointer; with Shift the time axis alone, with "
                                  "Ctrl the level axis"));
    densities.add(tr("Drag"), tr("Moves what is shown; with Shift or the right button zooms to the "
                                 "rectangle; moves a cursor"));
    densities.add(tr("Double click"), tr("Shows all again"));
    densities.add(tr("Ctrl+Z, Ctrl+Y"), tr("Undoes and redoes a zoom"));
    densities.add(tr("Tab, arrows"), tr("Choose and move a cursor, while they are shown"));
    densities.add(tr("L, S"), tr("Colours by logarithm or evenly; the next colour scale"));
    Table controls;
    controls.add(tr("Tab"), tr("Goes to the next control or view"));
    controls.add(tr("Enter"), tr("Presses the button or ticks the box that has the focus; takes a "
                                 "number that was typed"));
    controls.add(tr("Alt and a letter"), tr("Goes to what has this letter underlined"));
    controls.add(tr("Arrows, Home, End"), tr("Move a slider or a choice that has the focus"));
    return menuKeys() + heading(tr("In the views")) + views.html() +
           heading(tr("In the densities")) + densities.html() + heading(tr("Beside the views")) +
           controls.html();
}

QString HelpMenu::readings()
{
    QString page;
    for (const Readings::Section& section : Readings::meanings()) {
        Table table;
        for (const auto& [name, meaning] : section.figures)
            table.add(name, meaning);
        page += heading(section.title) + table.html();
    }
    Table densities;
    for (const auto& [name, meaning] : DensityReadings::meanings())
        densities.add(name, meaning);
    page += heading(tr("Below the density of the eye")) + densities.html();
    return page;
}

QString HelpMenu::about() const
{
    QStringList lines{
        tr("Shows sampled signals over time, as eye diagrams and as constellations, and measures "
           "them."),
        tr("Copyright the Orvane authors. Licensed under the Apache License 2.0.")};
    const QStringList parts = QStringList{QStringLiteral("Qt %1").arg(QLatin1String(qVersion()))} +
                              libraries::versions() +
                              QStringList{tr("Renderer: %1").arg(Renderer::Description())};
    QString page = QStringLiteral("<h2>%1</h2>")
                       .arg(tr("Orvane workbench %1").arg(QCoreApplication::applicationVersion()));
    for (const QString& line : lines)
        page += QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped());
    page += heading(tr("What it stands on")) + QStringLiteral("<ul>");
    for (const QString& part : parts)
        page += QStringLiteral("<li>%1</li>").arg(part.toHtmlEscaped());
    return page + QStringLiteral("</ul>");
}
