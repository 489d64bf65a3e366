// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QCoreApplication>
#include <QSize>

#include <optional>

class SignalFeed;
class VCGLEyeDiagram;
class VCGLIQDiagram;

/// Exports a view: as a picture of any size, or its data as a table.
///
/// A picture shows the same as the view, laid out for its size; the view on the screen does not
/// change. Controls such as the pause button are left out. PNG has the pixels that the screen would
/// have, with points as large as its scale. SVG and PDF are vectors, except for points beyond ten
/// thousand. CSV has a row of names and units, then numbers with all their digits. A density has
/// its counts instead, also as an array of NumPy (npy), which no other view has.
class ViewExport
{
    Q_DECLARE_TR_FUNCTIONS(ViewExport)
public:
    enum class Format { Png, Svg, Pdf, Csv, Npy };
    enum class Footer { None, Figures };
    static constexpr int maxSide = 16384; ///< of a picture, pixels
    static constexpr double minScale = 0.5;
    static constexpr double maxScale = 8.0;

    /// Endings of file names, in order.
    static QStringList endings();
    static std::optional<Format> formatOf(const QString& fileName);

    /// @param panes  of a time view, and of these two.
    ViewExport(const ViewPanes& panes, const SignalFeed& feed, const VCGLEyeDiagram& eye,
               const VCGLIQDiagram& iq);

    /// The file of an image; empty when there is not enough memory.
    static QByteArray png(const QImage& image);
    /// Why there is no picture, and no table.
    static Message unmade(const QSize& pixels);
    static Message noData();

    /// What would be in a file.
    /// @param index  of the pane: time, eye or IQ.
    /// @param size   of a picture, as on a screen.
    /// @param scale  of PNG: pixels to each of those.
    /// @param footer  of a picture, within its size: source, parameters and figures.
    Result<QByteArray> content(std::size_t index, Format format, const QSize& size, double scale,
                               Footer footer = Footer::None) const;
    /// A name with its ending, which the user may have left out: dialogs add none below a folder
    /// with a dot. Not that of a file that exists and was not named whole.
    static Result<QString> completed(const QString& file, const QString& ending);
    /// Writes a whole file, or leaves the old one.
    static Result<void> save(const QString& fileName, const QByteArray& content);

private:
    QByteArray table(const ViewPanes::Pane& pane, Format format) const;

    const ViewPanes& m_panes;
    const SignalFeed& m_feed;
    const VCGLEyeDiagram& m_eye;
    const VCGLIQDiagram& m_iq;
};
