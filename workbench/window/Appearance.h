// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPalette>

class QWidget;

/// How the application's widgets look beside the diagrams: Fusion in colours taken from the
/// ColorSet, without frames around what needs none.
namespace appearance {

/// Gives the application its style: Fusion, without pictures on the buttons of dialogs.
void setStyle();
/// The palette that goes with the current colours.
QPalette palette();
/// Whether the application has it.
bool isApplied();
/// Of the line about what lies over something else.
QColor edge();
/// Gives it to the application, and a main window the lines of its bars and docks.
void apply(QWidget& window);

} // namespace appearance
