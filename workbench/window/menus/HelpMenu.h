// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class QMainWindow;

/// The menu of what the user may want to know: the keys, what each read-out means, what program
/// this is.
class HelpMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param window  whose menus tell their keys, and which is told of.
    explicit HelpMenu(QMainWindow& window);

private:
    void show(const QString& title, const QString& page);
    QString keys() const;
    QString menuKeys() const;
    static QString readings();
    QString about() const;

    QMainWindow& m_window;
};
