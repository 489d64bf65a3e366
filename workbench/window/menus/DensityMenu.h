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
    /// @param eye,iq  whose switches it has.
    /// @param masks  becomes a part of it.
    DensityMenu(QMainWindow& window, DensityPane& eye, DensityPane& iq, QMenu& masks);

    QAction& cursors() { return *m_cursors; }
    QAction& next() { return *m_next; }
    QAction& previous() { return *m_previous; }
    /// Lets be chosen what there is to choose.
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
