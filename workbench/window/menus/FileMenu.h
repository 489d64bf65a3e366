// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/Recording.h"

#include <QMenu>

class QMainWindow;

/// The File menu, with the dialogs that choose a recording or a stream.
class FileMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param window  also gets the actions, so that their shortcuts work without the menu bar.
    explicit FileMenu(QMainWindow& window);

    QAction& openAction() { return *m_open; }
    /// Remembers a recording that was opened, and its folder; both are kept in the settings file.
    /// @param fileName  or the address of a live signal, which is not remembered.
    void remember(const QString& fileName);
    /// Removes a recording from the recent ones.
    void forget(const QString& fileName);

signals:
    void fileChosen(const QString& fileName);
    void recentChosen(const QString& fileName); ///< One that was opened before.
    void streamChosen(const QString& address, const Recording::Options& options);
    void builtInChosen();
    void demoChosen(ModulationKind scheme);
    void informationWanted();
    void exportWanted();

private:
    void chooseFile();
    void chooseStream();
    void buildRecent();
    void showRecent();
    void setRecent(const QStringList& files);

    QAction* m_open;
    QMenu* m_recent;
    QStringList m_recentFiles; // the latest first
    QString m_folder;          // where the last recording was
};
