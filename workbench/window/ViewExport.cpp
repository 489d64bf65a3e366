// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ViewExport.h"

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "workbench/feed/SignalFeed.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <charconv>

namespace {

constexpr std::size_t iqIndex = 2; // of the pane
constexpr double fineness = 4.0;   // pixels of a picture within vectors, to one of the screen
constexpr double pointsPerInch = 72.0;

/// A view of another size for a while, without anybody seeing it.
class Resized
{
public:
    Resized(QWidget& view, const QSize& size)
        : m_view(view)
        , m_before(view.size())
    {
        m_view.setUpdatesEnabled(false);
        m_view.resize(size);
    }
    ~Resized()
    {
        m_view.resize(m_before);
        m_view.setUpdatesEnabled(true);
    }
    Resized(const Resized&) = delete;
    Resized& operator=(const Resized&) = delete;

private:
    QWidget& m_view;
    QSize m_before;
};

QString title(const ViewPanes::Pane& pane) { return pane.showing->text().remove(QLatin1Char('&')); }

/// Paints what the view paints itself, then the widgets in it.
void paint(const ViewPanes::Pane& pane, QPainter& painter)
{
    pane.view->Render(painter);
    for (const auto& child : pane.view->Widgets()) {
        QWidget* carried = child->GetQWidget();
        if (!carried)
            continue;
        painter.save();
        painter.translate(carried->mapTo(pane.view, QPoint()));
        carried->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
        painter.restore();
    }
}

QImage image(const ViewPanes::Pane& pane, const QSize& size, double scale)
{
    QImage result(size * scale, QImage::Format_RGB32);
    result.setDevicePixelRatio(scale);
    result.fill(Qt::black);
    QPainter painter(&result);
    paint(pane, painter);
    return result;
}

/// Vectors, but for what would be too many of them.
void paintVectors(const ViewPanes::Pane& pane, std::size_t drawnCount, QPainter& painter)
{
    constexpr std::size_t mostDrawn = 20000;
    const bool isOwnWidget = pane.canvas != pane.view; // drawn pixel by pixel
    if (!isOwnWidget && drawnCount <= mostDrawn) {
        paint(pane, painter);
        return;
    }
    paint(pane, painter);
    const QRect place = isOwnWidget
                            ? QRect(pane.canvas->mapTo(pane.view, QPoint()), pane.canvas->size())
                            : pane.view->Widgets()[1]->geometry();
    const QImage all = image(pane, pane.view->size(), fineness);
    const QRect part(place.topLeft() * fineness, place.size() * fineness);
    QImage inside = all.copy(part);
    inside.setDevicePixelRatio(1.0);
    painter.drawImage(QRectF(place), inside);
}

class Table
{
public:
    explicit Table(const char* names) { m_text = names; }
    void add(std::initializer_list<double> row)
    {
        char separator = '\n';
        for (const double value : row) {
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
            QStringLiteral("csv")};
}

std::optional<ViewExport::Format> ViewExport::formatOf(const QString& fileName)
{
    const int index = endings().indexOf(QFileInfo(fileName).suffix().toLower());
    return index < 0 ? std::nullopt : std::optional(static_cast<Format>(index));
}

ViewExport::ViewExport(ViewPanes& panes, SignalFeed& feed, std::function<void()> fitIq)
    : m_panes(panes)
    , m_feed(feed)
    , m_fitIq(std::move(fitIq))
{}

QByteArray ViewExport::content(std::size_t index, Format format, const QSize& size, double scale,
                               QString& why) const
{
    if (format == Format::Csv) {
        const QByteArray text = table(index);
        if (text.isEmpty())
            why = tr("there are no data to export yet; play the signal first");
        return text;
    }
    const QSize pixels = size * (format == Format::Png ? scale : 1.0);
    if (pixels.isEmpty() || pixels.width() > maxSide || pixels.height() > maxSide) {
        why = tr("a picture of %1 x %2 pixels cannot be made; give up to %3")
                  .arg(pixels.width())
                  .arg(pixels.height())
                  .arg(maxSide);
        return QByteArray();
    }
    return picture(m_panes.panes().at(index), format, size, scale);
}

QByteArray ViewExport::picture(const ViewPanes::Pane& pane, Format format, const QSize& size,
                               double scale) const
{
    QByteArray result;
    {
        const Resized resized(*pane.view, size);
        m_fitIq();
        // Points age, also while the signal stands still: those that were seen last come again.
        if (&pane == &m_panes.panes().at(iqIndex) && !m_feed.isPlaying())
            m_panes.showWhilePaused([this] { m_feed.iq().notifyAgain(); });
        QBuffer buffer(&result);
        buffer.open(QIODevice::WriteOnly);
        if (format == Format::Png) {
            image(pane, size, scale).save(&buffer, "PNG");
        } else if (format == Format::Svg) {
            QSvgGenerator generator;
            generator.setOutputDevice(&buffer);
            generator.setResolution(pane.view->logicalDpiX()); // or texts have another size
            generator.setSize(size);
            generator.setViewBox(QRect(QPoint(), size));
            generator.setTitle(title(pane));
            QPainter painter(&generator);
            paintVectors(pane, drawnCount(pane), painter);
        } else {
            QPdfWriter writer(&buffer);
            writer.setResolution(pane.view->logicalDpiX()); // or texts have another size
            writer.setPageSize(QPageSize(QSizeF(size) * pointsPerInch / pane.view->logicalDpiX(),
                                         QPageSize::Point, QString(), QPageSize::ExactMatch));
            writer.setPageMargins(QMarginsF());
            writer.setTitle(title(pane));
            QPainter painter(&writer);
            paintVectors(pane, drawnCount(pane), painter);
        }
    }
    m_fitIq();
    return result;
}

std::size_t ViewExport::drawnCount(const ViewPanes::Pane& pane) const
{
    return &pane == &m_panes.panes().at(iqIndex) ? m_feed.iq().newestI().size() * 100 : 0;
}

QByteArray ViewExport::table(std::size_t index) const
{
    if (index == 0) {
        const std::vector<double> samples = m_feed.shownSamples();
        Table table("time (s),level");
        for (std::size_t k = 0; k < samples.size(); ++k)
            table.add({(static_cast<double>(k) - static_cast<double>(samples.size())) /
                           m_feed.scale().sampleRate,
                       samples[k]});
        return table.text();
    }
    if (index == 1) {
        const EyeFeed& eye = m_feed.eye();
        const std::size_t length = eye.traceLength();
        const EyeCut& cut = eye.cut();
        const int symbols = cut.clock == EyeCut::Clock::None ? 1 : cut.symbolCount;
        Table table(cut.clock == EyeCut::Clock::None ? "trace,time (traces),level"
                                                     : "trace,time (symbols),level");
        for (std::size_t k = 0; k < eye.traces().size(); ++k)
            table.add({static_cast<double>(k / length),
                       symbols * static_cast<double>(k % length) / static_cast<double>(length - 1),
                       eye.traces()[k]});
        return table.text();
    }
    const IqFeed& iq = m_feed.iq();
    Table table("I,Q");
    for (std::size_t k = 0; k < iq.newestI().size(); ++k)
        table.add({iq.newestI()[k], k < iq.newestQ().size() ? iq.newestQ()[k] : 0.0});
    return table.text();
}

QString ViewExport::save(const QString& fileName, const QByteArray& content)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return tr("%1: cannot be written (%2); choose another place")
            .arg(fileName, file.errorString());
    return QString();
}
