// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/ViewPanes.h"

#include <QCoreApplication>
#include <QSize>

#include <optional>

class SignalFeed;

/// Keeps what a view shows: as a picture of any size, or the data as a table.
///
/// PNG has the pixels that the screen would have. In SVG and PDF texts, axes and grids are vectors;
/// the eye's traces, and points of which there are tens of thousands, are a picture of four pixels
/// to one of the screen. CSV has a row of names and units, then numbers as exact as they are.
class ViewExport
{
    Q_DECLARE_TR_FUNCTIONS(ViewExport)
public:
    enum class Format { Png, Svg, Pdf, Csv };
    static constexpr int maxSide = 16384; ///< of a picture, pixels
    static constexpr double minScale = 0.5;
    static constexpr double maxScale = 8.0;

    /// Endings of file names, in order.
    static QStringList endings();
    static std::optional<Format> formatOf(const QString& fileName);

    /// @param fitIq  lays out the axes of the IQ view anew when its size has changed.
    ViewExport(ViewPanes& panes, SignalFeed& feed, std::function<void()> fitIq);

    /// What would be in a file.
    /// @param index  of the pane: time, eye or IQ.
    /// @param size   of a picture, as on a screen.
    /// @param scale  of PNG: pixels to each of those.
    /// @param why    one sentence where the result is empty.
    QByteArray content(std::size_t index, Format format, const QSize& size, double scale,
                       QString& why) const;
    /// Writes a file whole, or leaves what is there. @return why not, one sentence; empty: done.
    static QString save(const QString& fileName, const QByteArray& content);

private:
    QByteArray picture(const ViewPanes::Pane& pane, Format format, const QSize& size,
                       double scale) const;
    QByteArray table(std::size_t index) const;
    std::size_t drawnCount(const ViewPanes::Pane& pane) const;

    ViewPanes& m_panes;
    SignalFeed& m_feed;
    std::function<void()> m_fitIq;
};
