// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MenuEntries.h"

#include <QAbstractSlider>
#include <QComboBox>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>

namespace {

class KeyKeeper : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto& press = *static_cast<QKeyEvent*>(event);
        const bool isPlain = (press.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        const bool isMove = press.key() == Qt::Key_Left || press.key() == Qt::Key_Right ||
                            press.key() == Qt::Key_Home || press.key() == Qt::Key_End;
        if (isPlain && (isMove || (qobject_cast<QComboBox*>(watched) && isLetter(press))))
            event->accept();
        return false;
    }

private:
    static bool isLetter(const QKeyEvent& press)
    {
        return press.text().size() == 1 && press.text()[0].isLetterOrNumber();
    }
};

} // namespace

QAction* menus::add(QMainWindow& window, QMenu& menu, const QString& text,
                    const QKeySequence& shortcut)
{
    QAction* action = menu.addAction(text);
    action->setShortcut(shortcut);
    window.addAction(action);
    return action;
}

void menus::keepKeys(QMainWindow& window)
{
    auto* keeper = new KeyKeeper(&window);
    for (auto* slider : window.findChildren<QAbstractSlider*>())
        slider->installEventFilter(keeper);
    for (auto* box : window.findChildren<QComboBox*>())
        box->installEventFilter(keeper);
}
