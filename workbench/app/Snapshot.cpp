// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/Snapshot.h"

#include "workbench/window/MainWindow.h"
#include "workbench/window/ViewPanes.h"

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

QByteArray png(QWidget& widget, QString& why)
{
    const QByteArray result = ViewExport::png(widget.grab().toImage());
    if (result.isEmpty())
        why = ViewExport::unmade(widget.size());
    return result;
}

} // namespace

Snapshot::Result Snapshot::take(MainWindow& window, double seconds, const QString& folder,
                                const std::vector<ViewExport::Format>& formats)
{
    Result result;
    if (!QDir().mkpath(folder)) {
        result.error = tr("%1: cannot create the folder; choose another place").arg(folder);
        return result;
    }
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.panes().showAll();
    window.show();
    play(window, seconds);
    if (window.feed().hasFailed()) {
        result.error = window.feed().trouble();
        return result;
    }
    if (!window.feed().hasPlayed()) {
        result.error = tr("no samples came, so there is nothing to show; check who sends them");
        return result;
    }
    QCoreApplication::processEvents();
    window.grab(); // the first picture of an eye sets its axis
    QCoreApplication::processEvents();

    const Contents made = contents(window, formats, result);
    if (result.error.isEmpty() && made.empty())
        result.error = tr("%1; play more seconds, or another channel").arg(result.notice);
    if (result.error.isEmpty())
        result.files = write(made, folder, result.error);
    return result;
}

Snapshot::Contents Snapshot::contents(MainWindow& window,
                                      const std::vector<ViewExport::Format>& formats,
                                      Result& result)
{
    Contents contents;
    QStringList without;
    const auto& panes = window.panes().panes();
    for (const ViewExport::Format format : formats) {
        const QString ending = ViewExport::endings()[static_cast<int>(format)];
        for (std::size_t k = 0; k < panes.size(); ++k) {
            const QString name = QString::fromLatin1(panes[k].name) + QLatin1Char('.') + ending;
            QString why;
            const GLLayout& view = *panes[k].view;
            const QByteArray content =
                window.exporter().content(k, format, view.size(), view.devicePixelRatioF(), why);
            if (!panes[k].view->isValid()) {
                result.error = tr("OpenGL: no context can be created; check the graphics driver");
                return {};
            }
            if (why == ViewExport::noData()) {
                without += name;
            } else if (!why.isEmpty()) {
                result.error = name + QStringLiteral(": ") + why;
                return {};
            } else {
                contents.emplace_back(name, content);
            }
        }
        if (format != ViewExport::Format::Png)
            continue;
        contents.emplace_back(QStringLiteral("workbench.png"), png(window, result.error));
        if (!result.error.isEmpty())
            return {};
    }
    if (!without.isEmpty())
        result.notice =
            tr("%1: left out, there are no data to write").arg(without.join(QLatin1String(", ")));
    return contents;
}

QStringList Snapshot::write(const Contents& contents, const QString& folder, QString& error)
{
    std::vector<std::unique_ptr<QSaveFile>> files;
    const auto refuse = [&error](const QSaveFile& file) {
        error = tr("%1: cannot be written (%2); choose another folder")
                    .arg(file.fileName(), file.errorString());
        return QStringList();
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
