// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/Snapshot.h"

#include "workbench/window/MainWindow.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QDir>
#include <QPixmap>
#include <QSaveFile>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

/// Plays, and fits the axes to what is seen then: no clock has a part in it.
void play(MainWindow& window, double seconds)
{
    SignalFeed& feed = window.feed();
    window.panes().showWhilePaused([&] {
        if (!feed.gate().isFixed()) // that was played
            feed.transport().playThrough(seconds);
        window.player().fitLevels();
    });
    window.measure();
}

Result<QByteArray> png(QWidget& widget)
{
    const QByteArray result = ViewExport::png(widget.grab().toImage());
    if (result.isEmpty())
        return tl::unexpected(ViewExport::unmade(widget.size()));
    return result;
}

} // namespace

Result<Snapshot::Taken> Snapshot::take(MainWindow& window, double seconds, const QString& folder,
                                       const std::vector<ViewExport::Format>& formats)
{
    if (!QDir().mkpath(folder))
        return failure(tr("%1: cannot create the folder; choose another place").arg(folder));
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.panes().showAll();
    window.show();
    play(window, seconds);
    if (window.feed().hasFailed())
        return tl::unexpected(*window.feed().trouble());
    if (!window.feed().hasPlayed())
        return failure(tr("no samples came, so there is nothing to show; check who sends them"));
    QCoreApplication::processEvents();
    window.grab(); // the first picture of an eye sets its axis
    QCoreApplication::processEvents();

    const auto made = shown(window, formats);
    if (!made)
        return tl::unexpected(made.error());
    if (made->contents.empty())
        return failure(tr("%1; play more seconds, or another channel").arg(made->notice));
    return write(made->contents, folder).map([&made](const QStringList& files) {
        return Taken{files, made->notice};
    });
}

Result<Snapshot::Shown> Snapshot::shown(MainWindow& window,
                                        const std::vector<ViewExport::Format>& formats)
{
    Shown result;
    QStringList without;
    const auto& panes = window.panes().panes();
    for (const ViewExport::Format format : formats) {
        const QString ending = ViewExport::endings()[static_cast<int>(format)];
        for (std::size_t k = 0; k < panes.size(); ++k) {
            const QString name = QString::fromLatin1(panes[k].name) + QLatin1Char('.') + ending;
            const GLLayout& view = *panes[k].view;
            const auto content =
                window.exporter().content(k, format, view.size(), view.devicePixelRatioF());
            if (!panes[k].view->isValid())
                return failure(tr("OpenGL: no context can be created; check the graphics driver"));
            if (content)
                result.contents.emplace_back(name, *content);
            else if (content.error() == ViewExport::noData())
                without += name;
            else
                return failure(name + QStringLiteral(": ") + content.error().sentence);
        }
        if (format != ViewExport::Format::Png)
            continue;
        const auto whole = png(window);
        if (!whole)
            return tl::unexpected(whole.error());
        result.contents.emplace_back(QStringLiteral("workbench.png"), *whole);
    }
    if (!without.isEmpty())
        result.notice =
            tr("%1: left out, there are no data to write").arg(without.join(QLatin1String(", ")));
    return result;
}

Result<QStringList> Snapshot::write(const Contents& contents, const QString& folder)
{
    std::vector<std::unique_ptr<QSaveFile>> files;
    const auto refuse = [](const QSaveFile& file) {
        return failure(tr("%1: cannot be written (%2); choose another folder")
                           .arg(file.fileName(), file.errorString()));
    };
    for (const auto& [name, content] : contents) {
        files.push_back(std::make_unique<QSaveFile>(QDir(folder).filePath(name)));
        QSaveFile& file = *files.back();
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
            !file.flush())
            return refuse(file);
    }
    QStringList paths;
    for (const auto& file : files) {
        if (!file->commit())
            return refuse(*file);
        paths += file->fileName();
    }
    return paths;
}
