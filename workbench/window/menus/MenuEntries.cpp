// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/MenuEntries.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>

namespace {

class KeyKeeper : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress)
            return click(qobject_cast<QAbstractButton*>(watched), *static_cast<QKeyEvent*>(event));
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto& press = *static_cast<QKeyEvent*>(event);
        const bool isPlain = (press.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (isPlain && press.key() == Qt::Key_Space && !isTyping(watched)) {
            event->ignore(); // a field that is not edited would take it
            return true;
        }
        if (!qobject_cast<QAbstractSlider*>(watched) && !qobject_cast<QComboBox*>(watched))
            return false;
        const bool isMove = press.key() == Qt::Key_Left || press.key() == Qt::Key_Right ||
                            press.key() == Qt::Key_Home || press.key() == Qt::Key_End;
        if (isPlain && (isMove || (qobject_cast<QComboBox*>(watched) && isLetter(press))))
            event->accept();
        return false;
    }

private:
    /// The space bar belongs to the window: Enter presses buttons instead.
    static bool click(QAbstractButton* button, const QKeyEvent& press)
    {
        const bool isEnter = press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter;
        if (button && isEnter && !press.isAutoRepeat())
            button->click();
        return button && isEnter;
    }
    static bool isTyping(QObject* watched)
    {
        const auto* box = qobject_cast<QAbstractSpinBox*>(watched);
        const auto* line = box ? box->findChild<QLineEdit*>() : nullptr;
        return line && line->isModified();
    }
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
    rename(*action, text);
    return action;
}

QString menus::plain(QString text)
{
    return text.remove(QLatin1Char('&')).remove(QLatin1String("...")).trimmed();
}

void menus::rename(QAction& action, const QString& text)
{
    action.setText(text);
    const QString key = action.shortcut().toString(QKeySequence::NativeText);
    action.setToolTip(key.isEmpty() ? plain(text)
                                    : QStringLiteral("%1 (%2)").arg(plain(text), key));
}

void menus::keepKeys(QMainWindow& window)
{
    auto* keeper = new KeyKeeper(&window);
    for (auto* widget : window.findChildren<QWidget*>()) {
        auto* spinBox = qobject_cast<QAbstractSpinBox*>(widget);
        if (spinBox || qobject_cast<QAbstractSlider*>(widget) || qobject_cast<QComboBox*>(widget) ||
            qobject_cast<QAbstractButton*>(widget))
            widget->installEventFilter(keeper);
        if (spinBox) { // a typed text stays modified if it is equal to the formatted one
            auto* line = spinBox->findChild<QLineEdit*>();
            QObject::connect(spinBox, &QAbstractSpinBox::editingFinished, line,
                             [line] { line->setModified(false); });
        }
    }
}
