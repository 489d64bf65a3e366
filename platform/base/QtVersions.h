// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QString>

/// Everything that differs between Qt 5 and Qt 6; all other code compiles with both. Events are
/// template arguments, so that this header needs no Qt Gui.
namespace QtVersions {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)

/// Whether a window that holds a widget with OpenGL still shows its other widgets where there is no
/// OpenGL.
constexpr bool bearsMissingOpenGL = false;
/// Whether Qt's OpenGL painter takes a glyph's part of a pixel from its logical place.
constexpr bool placesTextsByLogicalPixels = false;

/// To be called before the application object is made: widgets and pictures keep their size on
/// screens with many pixels.
inline void scaleForHighDpi() {}

inline QString libraryPath(QLibraryInfo::LibraryPath path) { return QLibraryInfo::path(path); }

/// Position of a mouse event in the widget that receives it.
template<typename Event>
auto position(const Event& event)
{
    return event.position();
}

/// Position of a mouse event in that widget's window.
template<typename Event>
auto scenePosition(const Event& event)
{
    return event.scenePosition();
}

/// Position of a mouse event on the screen.
template<typename Event>
auto globalPosition(const Event& event)
{
    return event.globalPosition();
}

#else

constexpr bool bearsMissingOpenGL = true;
constexpr bool placesTextsByLogicalPixels = true;

inline void scaleForHighDpi()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

inline QString libraryPath(QLibraryInfo::LibraryLocation path)
{
    return QLibraryInfo::location(path);
}

template<typename Event>
auto position(const Event& event)
{
    return event.localPos();
}

template<typename Event>
auto scenePosition(const Event& event)
{
    return event.windowPos();
}

template<typename Event>
auto globalPosition(const Event& event)
{
    return event.screenPos();
}

#endif

} // namespace QtVersions
