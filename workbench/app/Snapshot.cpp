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

/// Plays; the levels' axis fits what is to be seen at the end.
void play(MainWindow& window, double seconds)
{
    SignalFeed& feed = window.feed();
    if (const auto count = feed.source()->sampleCount())
        seconds = std::min(seconds, static_cast<double>(*count) / feed.scale().sampleRate);
    const double seen = std::min(seconds, feed.span());
    feed.setWatching(false);
    if (seconds > seen)
        feed.playThrough(seconds - seen);
    feed.setWatching(true);
    feed.playThrough(seen);
    feed.eye().fitLevels(); // it shows far less than has been watched
    window.refresh();
}

} // namespace

QStringList Snapshot::take(MainWindow& window, double seconds, const QString& folder,
                           QString& error)
{
    if (!QDir().mkpath(folder)) {
        error = tr("%1: cannot create the folder; choose another place").arg(folder);
        return {};
    }
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.panes().showAll();
    window.show();
    play(window, seconds);
    QCoreApplication::processEvents();
    window.grab(); // the first picture of an eye sets its axis
    QCoreApplication::processEvents();

    std::vector<std::pair<QString, QPixmap>> pictures;
    for (const ViewPanes::Pane& pane : window.panes().panes()) {
        pictures.emplace_back(QString::fromLatin1(pane.name), pane.view->grab());
        if (!pane.view->isValid()) {
            error = tr("OpenGL: no context can be created; check the graphics driver");
            return {};
        }
    }
    pictures.emplace_back(QStringLiteral("workbench"), window.grab());
    std::vector<std::unique_ptr<QSaveFile>> files;
    for (const auto& [name, picture] : pictures) {
        auto file =
            std::make_unique<QSaveFile>(QDir(folder).filePath(name + QStringLiteral(".png")));
        if (!file->open(QIODevice::WriteOnly) || !picture.save(file.get(), "PNG")) {
            error = tr("%1: cannot be written (%2); choose another folder")
                        .arg(file->fileName(), file->errorString());
            return {};
        }
        files.push_back(std::move(file));
    }
    QStringList paths;
    for (const auto& file : files) {
        if (!file->commit()) {
            error = tr("%1: cannot be written (%2); choose another folder")
                        .arg(file->fileName(), file->errorString());
            return {};
        }
        paths += file->fileName();
    }
    return paths;
}
