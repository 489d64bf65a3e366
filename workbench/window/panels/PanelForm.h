// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFormLayout>
#include <QStringList>

class QLabel;
class QSlider;

/// Rows of the panels.
namespace panelForm {

constexpr int nameWidth = 96;

/// A section with a heading, appended to a panel that has a layout.
QFormLayout* addSection(QWidget& panel, const QString& title);
/// The only section of a panel, which has no layout yet.
QFormLayout* makeSection(QWidget& panel, const QString& title);
/// Adds a control with its name; all names have one width.
void addControl(QFormLayout& form, const QString& name, QWidget* control);
/// Adds a value that can only be read.
QLabel* addFact(QFormLayout& form, const QString& name);
/// Reserves room in a label for any of these texts, so that nothing moves when it changes.
void reserveRoom(QLabel& label, const QStringList& texts);
/// Adds a slider, and beside it a label for its value.
QSlider* addSlider(QFormLayout& form, const QString& name, int lowest, int highest, QLabel** value);

} // namespace panelForm
