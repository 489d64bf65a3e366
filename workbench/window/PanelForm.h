// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFormLayout>

class QLabel;
class QSlider;
class QString;

/// Rows of the panels.
namespace panelForm {

constexpr int nameWidth = 96;

/// A section with a heading, appended to a panel that has a layout.
QFormLayout* addSection(QWidget& panel, const QString& title);
/// A value that can be read only.
QLabel* addFact(QFormLayout& form, const QString& name);
/// A slider, and beside it a label for its value.
QSlider* addSlider(QFormLayout& form, const QString& name, int lowest, int highest, QLabel** value);

} // namespace panelForm
