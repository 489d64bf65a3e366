// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/Snapshot.h"

#include "workbench/window/MainWindow.h"
#include "workbench/window/ViewPanes.h"

#include <QBuffer>
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
    feed.setWatching(false);
    window.panes().showWhilePaused([&] {
        if (!feed.gate().isFixed()) // that was played
            feed.transport().playThrough(seconds);
        feed.fitToGate();
    });
    window.refresh();
    window.measure();
}

QByteArray png(QWidget& widget)
{
    QByteArray result;
    QBuffer buffer(&result);
    buffer.open(QIODevice::WriteOnly);
    widget.grab().save(&buffer, "PNG");
    return result;
}

} // namespace

QStringList Snapshot::take(MainWindow& window, double seconds, const QString& folder,
                           const std::vector<ViewExport::Format>& formats, QString& error)
{
    if (!QDir().mkpath(folder)) {
        error = tr("%1: cannot create the folder; choose another place").arg(folder);
        return {};
    }
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.panes().showAll();
    window.show();
    play(window, seconds);
    if (!window.feed().hasPlayed()) {
        error = tr("no samples came, so there is nothing to show; check who sends them");
        return {};
    }
    QCoreApplication::processEvents();
    window.grab(); // the first picture of an eye sets its axis
    QCoreApplication::processEvents();

    std::vector<std::pair<QString, QByteArray>> contents; // by name of the file
    const auto& panes = window.panes().panes();
    for (const ViewExport::Format format : formats) {
        const QString ending = ViewExport::endings()[static_cast<int>(format)];
        for (std::size_t k = 0; k < panes.size(); ++k) {
            const QString name = QString::fromLatin1(panes[k].name) + QLatin1Char('.') + ending;
            const QByteArray content =
                format == ViewExport::Format::Png
                    ? png(*panes[k].view)
                    : window.exporter().content(k, format, panes[k].view->size(), 1.0, error);
            if (!panes[k].view->isValid())
                error = tr("OpenGL: no context can be created; check the graphics driver");
            if (!error.isEmpty()) {
                error = panes[k].view->isValid() ? name + QStringLiteral(": ") + error : error;
                return {};
            }
            contents.emplace_back(name, content);
        }
        if (format == ViewExport::Format::Png)
            contents.emplace_back(QStringLiteral("workbench.png"), png(window));
    }
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
