// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/OrderlyExit.h"

#include "workbench/window/MainWindow.h"

#include <QApplication>

#include <cerrno>
#include <csignal>

#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int signalNumbers[] = {SIGTERM, SIGINT, SIGHUP};

// A signal handler may do little more than write into a pipe; the event loop reads the other end.
int sockets[2] = {-1, -1};

void noteSignal(int)
{
    const int kept = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(sockets[0], &byte, 1);
    errno = kept;
}

int openSockets()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets) != 0)
        sockets[0] = sockets[1] = -1;
    return sockets[1];
}

} // namespace

OrderlyExit::OrderlyExit(MainWindow& window)
    : m_notifier(openSockets(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    connect(qApp, &QCoreApplication::aboutToQuit, &window, [&window] {
        if (window.isVisible())
            window.close();
    });
    connect(
        qApp, &QGuiApplication::commitDataRequest, &window, [&window] { window.keep(); },
        Qt::DirectConnection);
    if (sockets[0] < 0)
        return;
    struct sigaction ordinary = {};
    ordinary.sa_handler = noteSignal;
    ordinary.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : signalNumbers) {
        struct sigaction before = {};
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(number, &ordinary, nullptr);
    }
}

OrderlyExit::~OrderlyExit()
{
    for (const int number : signalNumbers) {
        struct sigaction now = {};
        if (::sigaction(number, nullptr, &now) == 0 && now.sa_handler == noteSignal)
            ::signal(number, SIG_DFL);
    }
    m_notifier.setEnabled(false);
    for (int& socket : sockets) {
        ::close(socket);
        socket = -1;
    }
}
