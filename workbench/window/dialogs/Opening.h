// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

#include <QObject>

class Progress;
class QWidget;

/// Opens recordings and live signals in the background, and asks for missing facts. The present
/// signal plays on meanwhile.
class Opening : public QObject
{
    Q_OBJECT
public:
    /// @param window  of the dialogs, and parent.
    Opening(Progress& progress, QWidget* window);

    /// Opens a file. Asks for format and rate of raw samples.
    void ask(const QString& fileName);
    /// Opens a file as it was opened before; asks when that is not remembered.
    void openAgain(const QString& fileName);
    void open(const QString& address, const Recording::Options& options);

signals:
    /// A signal was opened, or could not be. The receiver may take the recording.
    void done(const QString& address, Result<Recording>& recording);

private:
    QWidget* m_window;
    Progress& m_progress;
};
