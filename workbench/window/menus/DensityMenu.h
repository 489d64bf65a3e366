// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class DensityPane;
class QMainWindow;

/// The menu of the densities: switching them, cursors, masks, the way back.
class DensityMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param eye,iq  the densities that it switches.
    /// @param masks   becomes a submenu.
    DensityMenu(QMainWindow& window, DensityPane& eye, DensityPane& iq, QMenu& masks);

    QAction& cursors() { return *m_cursors; }
    QAction& next() { return *m_next; }
    QAction& previous() { return *m_previous; }
    /// Enables what can be chosen now.
    /// @param isOn     whether a density is shown.
    /// @param hasWay   whether stretches of signal are listed.
    void refresh(bool isOn, bool hasWay);

signals:
    void switchWanted();
    void restartWanted(); ///< forget all symbols

private:
    QAction* m_cursors;
    QAction* m_clear;
    QAction* m_next;
    QAction* m_previous;
};
