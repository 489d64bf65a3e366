// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPalette>

class QWidget;

/// Style of the application's widgets beside the diagrams: Fusion in colours of the ColorSet,
/// without superfluous frames.
namespace appearance {

/// Gives the application its style: Fusion, without pictures on the buttons of dialogs.
void setStyle();
/// The palette that goes with the current colours.
QPalette palette();
/// Whether the application has this palette.
bool isApplied();
/// Colour of the edge around strips that lie over other widgets.
QColor edge();
/// Sets the palette of the application, and the lines between bars and docks of a main window.
void apply(QWidget& window);

} // namespace appearance
