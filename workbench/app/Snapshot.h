// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/panes/ViewExport.h"

#include <QCoreApplication>
#include <QStringList>

#include <utility>
#include <vector>

class MainWindow;

/// Pictures of a window that nobody sees: each view and the whole window.
class Snapshot
{
    Q_DECLARE_TR_FUNCTIONS(Snapshot)
public:
    struct Taken
    {
        QStringList files; ///< Paths.
        QString notice;    ///< "what: why" of the views that have no data to write; empty for none.
    };
    /// Plays the window's signal and writes time, eye and iq in each format into a folder, which is
    /// created where it is missing; of PNG also workbench.png. All files are written whole or none;
    /// only tables of views without data are left out.
    /// @param seconds  of signal, played as fast as possible; up to the signal's end.
    static Result<Taken> take(MainWindow& window, double seconds, const QString& folder,
                              const std::vector<ViewExport::Format>& formats);

    using Contents = std::vector<std::pair<QString, QByteArray>>; ///< by name of the file
    /// Writes files into a folder, each of them whole or not at all.
    /// @return their paths.
    static Result<QStringList> write(const Contents& contents, const QString& folder);

private:
    /// What the window shows.
    struct Shown
    {
        Contents contents;
        QString notice; ///< as in Taken
    };

    static Result<Shown> shown(MainWindow& window, const std::vector<ViewExport::Format>& formats);
};
