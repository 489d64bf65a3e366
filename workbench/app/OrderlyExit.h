// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSocketNotifier>

class MainWindow;

/// Ends the program in the ordinary way, and saves the settings of the window, when the process is
/// asked to end (SIGTERM, SIGINT, SIGHUP) and when the desktop session ends. A signal that the
/// process was started to ignore stays ignored; a second one ends the process at once. One at a
/// time.
class OrderlyExit : public QObject
{
public:
    /// Needs an application. Signals that come before its event loop runs are handled then.
    explicit OrderlyExit(MainWindow& window);
    ~OrderlyExit() override;

private:
    QSocketNotifier m_notifier;
};
