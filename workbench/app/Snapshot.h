// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QStringList>

class MainWindow;

/// Pictures of a window that nobody sees: each view and the whole window.
class Snapshot
{
    Q_DECLARE_TR_FUNCTIONS(Snapshot)
public:
    /// Plays the window's signal and writes time.png, eye.png, iq.png and workbench.png into
    /// a folder, which is created where it is missing. All files are written whole or none.
    /// @param seconds  of signal, played as fast as possible; up to the signal's end.
    /// @param error    "what: why" when the pictures cannot be made.
    /// @return the files' paths, none on an error.
    static QStringList take(MainWindow& window, double seconds, const QString& folder,
                            QString& error);
};
