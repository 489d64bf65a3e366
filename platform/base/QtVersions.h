// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QString>

/// What Qt 5 and Qt 6 call by different names; all else is written so that both take it.
/// Events are template arguments, so that who wants a path needs no Qt Gui.
namespace QtVersions {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)

/// Whether a window with OpenGL in it bears that there is none.
constexpr bool bearsMissingOpenGL = false;
/// Whether Qt's OpenGL painter takes a glyph's part of a pixel from its logical place.
constexpr bool placesTextsByLogicalPixels = false;

/// Before the application object: widgets and pictures keep their size on screens of many pixels.
inline void scaleForHighDpi() {}

inline QString libraryPath(QLibraryInfo::LibraryPath path) { return QLibraryInfo::path(path); }

/// Of a mouse event, in the widget that takes it.
template<typename Event>
auto position(const Event& event)
{
    return event.position();
}

/// In that widget's window.
template<typename Event>
auto scenePosition(const Event& event)
{
    return event.scenePosition();
}

/// On the screen.
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
