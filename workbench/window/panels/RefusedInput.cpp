// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/RefusedInput.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPalette>
#include <QPointer>
#include <QSpinBox>
#include <QTimer>
#include <QToolTip>

#include <tuple>

namespace {

const QColor refusedColor(0xe5, 0x48, 0x4d); // readable on dark and light grounds

/// State of a line edit, which a swallowed key does not change.
auto stateOf(const QLineEdit& line)
{
    return std::make_tuple(line.text(), line.cursorPosition(), line.selectionStart());
}

QString rangeOf(const QAbstractSpinBox& field)
{
    const QString range = refusedInput::Watch::tr("only %1 to %2 can be given");
    if (const auto* whole = qobject_cast<const QSpinBox*>(&field))
        return range.arg(whole->minimum()).arg(whole->maximum());
    const auto* number = qobject_cast<const QDoubleSpinBox*>(&field);
    return number ? range.arg(number->minimum()).arg(number->maximum()) : QString();
}

} // namespace

void refusedInput::mark(QAbstractSpinBox& field, bool isRefused)
{
    QPalette palette;
    if (isRefused)
        palette.setColor(QPalette::Text, refusedColor);
    field.findChild<QLineEdit*>()->setPalette(palette);
}

void refusedInput::say(const QAbstractSpinBox& field, const QString& why)
{
    QToolTip::showText(field.mapToGlobal(field.rect().bottomLeft()), why,
                       const_cast<QAbstractSpinBox*>(&field));
}

refusedInput::Watch::Watch(QObject* parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool refusedInput::Watch::eventFilter(QObject* watched, QEvent* event)
{
    auto* field =
        event->type() == QEvent::KeyPress ? qobject_cast<QAbstractSpinBox*>(watched) : nullptr;
    auto* line = field ? field->findChild<QLineEdit*>() : nullptr;
    const QString text = line ? static_cast<QKeyEvent*>(event)->text() : QString();
    if (line && !text.isEmpty() && text.at(0).isPrint()) {
        QTimer::singleShot(0, line, [field, line, before = stateOf(*line)] {
            if (stateOf(*line) == before)
                say(*field, rangeOf(*field));
        });
    }
    return QObject::eventFilter(watched, event);
}
