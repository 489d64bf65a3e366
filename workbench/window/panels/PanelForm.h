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
/// The section that is all of a panel, which has no layout yet.
QFormLayout* makeSection(QWidget& panel, const QString& title);
/// A control with its name, which is as wide as all of them.
void addControl(QFormLayout& form, const QString& name, QWidget* control);
/// A value that can be read only.
QLabel* addFact(QFormLayout& form, const QString& name);
/// Keeps room in a label for any of these texts, so that nothing moves when it changes.
void reserve(QLabel& label, const QStringList& texts);
/// A slider, and beside it a label for its value.
QSlider* addSlider(QFormLayout& form, const QString& name, int lowest, int highest, QLabel** value);

} // namespace panelForm
