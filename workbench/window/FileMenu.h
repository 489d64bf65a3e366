// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationSource.h"

#include <QMenu>

class QMainWindow;

/// The menu of signals to open, and the dialog that chooses a recording.
class FileMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param window  also gets the actions, so that their shortcuts work without the menu bar.
    explicit FileMenu(QMainWindow& window);

    QAction& openAction() { return *m_open; }
    /// Remembers the folder of a file that was chosen elsewhere.
    void remember(const QString& fileName);

signals:
    void fileChosen(const QString& fileName);
    void builtInChosen();
    void demoChosen(ModulationSettings::Scheme scheme);
    void informationWanted();

private:
    void chooseFile();

    QAction* m_open;
    QString m_folder; // where the last recording was
};
