// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/ViewExport.h"

#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/window/panes/ExportFooter.h"
#include "workbench/window/panes/PaneNote.h"
#include "workbench/window/panes/ReadingTable.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <new>

namespace {

constexpr double pointsPerInch = 72.0;

QString title(const ViewPanes::Pane& pane) { return pane.showing->text().remove(QLatin1Char('&')); }

/// The part of a picture that a footer leaves.
QSize viewSize(const QSize& picture, const ExportFooter* footer)
{
    return picture - QSize(0, footer ? footer->height(picture.width()) : 0);
}

/// Paints the view as it is shown, with the notes over it, and a footer below it.
void paint(const ViewPanes::Pane& pane, const QSize& whole, const ExportFooter* footer,
           QPainter& painter)
{
    const QSize size = viewSize(whole, footer);
    if (footer)
        footer->paint(painter,
                      QRect(0, size.height(), whole.width(), whole.height() - size.height()));
    if (pane.cover) {
        pane.cover->render(painter, size);
        return pane.coverNote->paintPicture(painter, size);
    }
    pane.render(painter, size);
    const bool isOnView = pane.canvas == pane.view;
    const QRect canvas = isOnView ? QRect(QPoint(), size) : pane.plotRect(size);
    painter.translate(canvas.topLeft());
    pane.note->paintPicture(painter, canvas.size());
}

QByteArray picture(const ViewPanes::Pane& pane, ViewExport::Format format, const QSize& size,
                   double scale, const ExportFooter* footer)
{
    const int resolution = pane.view->logicalDpiX(); // or texts would have another size
    QByteArray result;
    if (format == ViewExport::Format::Png) {
        QImage image(size * scale, QImage::Format_RGB32);
        if (image.isNull())
            return result;
        image.setDevicePixelRatio(scale);
        image.fill(Qt::black);
        QPainter painter(&image);
        paint(pane, size, footer, painter);
        painter.end();
        return ViewExport::png(image);
    }
    QBuffer buffer(&result);
    buffer.open(QIODevice::WriteOnly);
    if (format == ViewExport::Format::Svg) {
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setResolution(resolution);
        generator.setSize(size);
        generator.setViewBox(QRect(QPoint(), size));
        generator.setTitle(title(pane));
        QPainter painter(&generator);
        paint(pane, size, footer, painter);
    } else {
        QPdfWriter writer(&buffer);
        writer.setResolution(resolution);
        writer.setPageSize(QPageSize(QSizeF(size) * pointsPerInch / resolution, QPageSize::Point,
                                     QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        writer.setTitle(title(pane));
        QPainter painter(&writer);
        paint(pane, size, footer, painter);
    }
    return result;
}

/// Without rounding errors in the last digits.
double rounded(double value) { return std::round(value * 1e9) / 1e9; }

class Table
{
public:
    explicit Table(const char* names) { m_text = names; }
    template<class Number>
    void add(std::initializer_list<Number> row)
    {
        char separator = '\n';
        for (const Number value : row) {
            char digits[32];
            const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
            m_text += separator;
            m_text.append(digits, static_cast<int>(end - digits));
            separator = ',';
        }
        m_isEmpty = false;
    }
    QByteArray text() const { return m_isEmpty ? QByteArray() : m_text + '\n'; }

private:
    QByteArray m_text;
    bool m_isEmpty = true;
};

} // namespace

QStringList ViewExport::endings()
{
    return {QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf"),
            QStringLiteral("csv"), QStringLiteral("npy")};
}

std::optional<ViewExport::Format> ViewExport::formatOf(const QString& fileName)
{
    const int index = int(endings().indexOf(QFileInfo(fileName).suffix().toLower()));
    return index < 0 ? std::nullopt : std::optional(static_cast<Format>(index));
}

ViewExport::ViewExport(const ViewPanes& panes, const SignalFeed& feed, const VCGLEyeDiagram& eye,
                       const VCGLIQDiagram& iq)
    : m_panes(panes)
    , m_feed(feed)
    , m_eye(eye)
    , m_iq(iq)
{}

QByteArray ViewExport::png(const QImage& image)
{
    QByteArray result;
    QBuffer buffer(&result);
    buffer.open(QIODevice::WriteOnly);
    try {
        return image.save(&buffer, "PNG") ? result : QByteArray();
    } catch (const std::bad_alloc&) {
        return QByteArray();
    }
}

Message ViewExport::unmade(const QSize& pixels)
{
    return tr("a picture of %1 x %2 pixels cannot be made; give up to %3, or fewer where there is "
              "not enough memory")
        .arg(pixels.width())
        .arg(pixels.height())
        .arg(maxSide);
}

Message ViewExport::noData()
{
    return tr("there are no data to export yet; play the signal first");
}

Result<QByteArray> ViewExport::content(std::size_t index, Format format, const QSize& size,
                                       double scale, Footer wanted) const
{
    const ViewPanes::Pane& pane = m_panes.panes().at(index);
    const bool isTable = format == Format::Csv || format == Format::Npy;
    const QSize pixels = size * (format == Format::Png ? scale : 1.0);
    const bool isPossible =
        !pixels.isEmpty() && pixels.width() <= maxSide && pixels.height() <= maxSide;
    try {
        std::optional<ExportFooter> footer;
        const ReadingTable* figures = pane.cover ? pane.coverReadings : pane.readings;
        if (figures && wanted == Footer::Figures && !isTable)
            footer.emplace(m_feed, figures->gate(), figures->texts(), figures->font());
        if (footer && isPossible && viewSize(size, &*footer).height() < size.height() / 2)
            return failure(tr("the figures take more than half of the picture; make it larger or "
                              "leave them out"));
        QByteArray result;
        if (isTable)
            result = table(pane, format);
        else if (isPossible)
            result = picture(pane, format, size, scale, footer ? &*footer : nullptr);
        if (result.isEmpty())
            return tl::unexpected(isTable ? noData() : unmade(pixels));
        return result;
    } catch (const std::bad_alloc&) {
        if (isTable)
            return failure(tr("there is not enough memory for its data; show a shorter time"));
        return tl::unexpected(unmade(pixels));
    }
}

QByteArray ViewExport::table(const ViewPanes::Pane& pane, Format format) const
{
    if (pane.cover)
        return pane.cover->data(endings()[static_cast<int>(format)]);
    if (format == Format::Npy)
        return QByteArray();
    if (pane.view == &m_iq) {
        const std::vector<float> samples = m_iq.GetSamples();
        Table table("I,Q");
        for (std::size_t k = 1; k < samples.size(); k += 2) {
            if (std::isfinite(samples[k - 1]) &&
                std::isfinite(samples[k])) // other samples do not show
                table.add({samples[k - 1], samples[k]});
        }
        return table.text();
    }
    if (pane.view == &m_eye) {
        const int length = m_feed.eye().cut().symbolCount;
        Table table("trace,time (symbols),level");
        double number = 0.0;
        for (const std::vector<QPointF>& trace : m_eye.GetTraces()) {
            for (const QPointF& sample : trace)
                table.add({number, rounded(length * sample.x()), sample.y()});
            ++number;
        }
        return table.text();
    }
    const std::vector<double> samples = m_feed.gate().samples();
    Table table("time (s),level");
    for (std::size_t k = 0; k < samples.size(); ++k)
        table.add({(static_cast<double>(k) - static_cast<double>(samples.size())) /
                       m_feed.format().sampleRate,
                   samples[k]});
    return table.text();
}

Result<QString> ViewExport::completed(const QString& file, const QString& ending)
{
    if (!QFileInfo(file).suffix().isEmpty())
        return file;
    const QString whole = file + QLatin1Char('.') + ending;
    if (QFileInfo::exists(whole))
        return failure(tr("%1: exists already; give the whole name to replace it").arg(whole));
    return whole;
}

Result<void> ViewExport::save(const QString& fileName, const QByteArray& content)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return failure(tr("%1: cannot be written (%2); choose another place")
                           .arg(fileName, file.errorString()));
    return {};
}
