// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/ViewExport.h"

#include <QCoreApplication>
#include <QStringList>

#include <vector>

class MainWindow;

/// Pictures of a window that nobody sees: each view and the whole window.
class Snapshot
{
    Q_DECLARE_TR_FUNCTIONS(Snapshot)
public:
    /// Plays the window's signal and writes time, eye and iq in each format into a folder, which is
    /// created where it is missing; of PNG also workbench.png. All files are written whole or none.
    /// @param seconds  of signal, played as fast as possible; up to the signal's end.
    /// @param error    "what: why" when the pictures cannot be made.
    /// @return the files' paths, none on an error.
    static QStringList take(MainWindow& window, double seconds, const QString& folder,
                            const std::vector<ViewExport::Format>& formats, QString& error);
};
