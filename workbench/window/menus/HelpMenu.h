// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class QMainWindow;

/// The Help menu: the keys, the meaning of each read-out, and facts about the program.
class HelpMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param window  the main window, whose menus have the keys.
    explicit HelpMenu(QMainWindow& window);

private:
    void show(const QString& title, const QString& page);
    QString keys() const;
    QString menuKeys() const;
    static QString readings();
    QString about() const;

    QMainWindow& m_window;
};
