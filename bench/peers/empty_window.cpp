// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// A window of Qt with nothing in it, as a measure of start and memory.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
