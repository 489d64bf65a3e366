// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/ExportFooter.h"

#include "platform/gui/ColorSet.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/player/Units.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int margin = 8;
const QString separator = QString(3, QChar(0x00a0)) + QChar(0x2002); // breaks after, not within

/// Keeps words together that must not be separated.
QString unbroken(QString text) { return text.replace(QLatin1Char(' '), QChar(0x00a0)); }

QString joined(const QStringList& parts)
{
    QStringList whole;
    for (const QString& part : parts)
        whole += unbroken(part);
    return whole.join(separator);
}

} // namespace

ExportFooter::ExportFooter(const SignalFeed& feed, const QString& gate, const QStringList& figures,
                           const QFont& font)
    : m_font(font)
{
    QStringList source{feed.source().name,
                       tr("sample rate %1").arg(units::rate(feed.source().sampleRate, "Hz"))};
    if (const auto symbolRate = feed.symbolRate())
        source += tr("symbol rate %1").arg(units::exactRate(*symbolRate, QStringLiteral("Bd")));
    if (feed.source().valueCount() > 1)
        source += tr("channel %1").arg(feed.channel().value + 1);
    const ReceiverSettings& receiver = feed.receiver();
    if (receiver.isOn && feed.checkReceiver() && !feed.source().firstSymbol) {
        const auto filter = receiver.usedFilter();
        if (receiver.shift != 0.0)
            source += tr("shifted by %1").arg(units::rate(receiver.shift, "Hz"));
        if (receiver.bandwidth)
            source += tr("channel of %1").arg(units::rate(*receiver.bandwidth, "Hz"));
        if (receiver.demodulation != ReceiverSettings::Demodulation::Linear)
            source +=
                receiver.demodulation == ReceiverSettings::Demodulation::Fm ? tr("FM") : tr("AM");
        if (filter)
            source +=
                tr("filter %1").arg(ReceiverSettings::filterNames()[static_cast<int>(*filter)]);
        if (receiver.modulation)
            source += modulationKinds::name(*receiver.modulation);
    }
    m_paragraphs = QStringList{joined(source), gate, joined(figures)};
    m_paragraphs.removeAll(QString());
}

int ExportFooter::height(int width) const
{
    const QRect room(0, 0, width - 2 * margin, 0);
    int height = 2 * margin;
    for (const QString& paragraph : m_paragraphs)
        height += QFontMetrics(m_font).boundingRect(room, Qt::TextWordWrap, paragraph).height();
    return height;
}

void ExportFooter::paint(QPainter& painter, const QRect& place) const
{
    painter.save();
    painter.fillRect(place, ColorSet::Instance()[IColorBase::colBackground]);
    painter.setPen(ColorSet::Instance()[IColorBase::colLabel]);
    painter.setFont(m_font);
    QRect room = place.adjusted(margin, margin, -margin, -margin);
    for (const QString& paragraph : m_paragraphs) {
        QRect taken;
        painter.drawText(room, Qt::TextWordWrap, paragraph, &taken);
        room.setTop(taken.bottom() + 1);
    }
    painter.restore();
}
