// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/MaskChoice.h"

#include "density/DensityPlot.h"
#include "workbench/window/density/DensityPane.h"

#include <QFile>
#include <QLocale>

namespace {

constexpr auto mostPlaced = static_cast<std::int64_t>(density::Counter::leastKept);

QString counted(std::int64_t count) { return QLocale(QLocale::English).toString(count); }

} // namespace

Result<density::Mask> MaskChoice::read(const QString& file)
{
    constexpr qint64 largest = 1 << 20;
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return failure(tr("cannot be read (%1)").arg(input.errorString()));
    QString error;
    const QByteArray text = input.read(largest + 1);
    if (text.size() > largest)
        return failure(tr("is too large for a mask"));
    const auto mask = density::Mask::fromJson(text, &error);
    if (!mask)
        return failure(tr("is no mask: %1").arg(error));
    return *mask;
}

MaskChoice::MaskChoice(DensityPane& eye, QObject* parent)
    : QObject(parent)
    , m_eye(eye)
{
    connect(&eye, &DensityPane::switched, this, [this](bool on) {
        restart();
        if (on)
            connect(m_eye.plot(), &density::DensityPlot::maskDrawn, this, &MaskChoice::draw);
    });
    connect(&eye, &DensityPane::restarted, this, &MaskChoice::restart);
}

void MaskChoice::choose(const std::optional<density::Mask>& mask)
{
    m_mask = mask;
    restart();
    emit changed();
}

void MaskChoice::chooseMargin(double margin)
{
    if (!m_mask || m_mask->margin == margin)
        return;
    density::Mask mask = *m_mask;
    mask.margin = margin;
    if (!mask.isUsable())
        return;
    m_mask = mask;
    if (m_eye.isOn() && !m_reason)
        show();
    emit changed();
}

/// The plot tests it already, as it placed it.
void MaskChoice::draw(const density::Mask& mask)
{
    m_mask = mask;
    m_reason.reset();
    m_placedAt = mostPlaced; // and it is to stay where it was drawn
    emit changed();
}

void MaskChoice::restart()
{
    m_placedAt = 0;
    m_reason.reset();
    if (!m_eye.isOn())
        return;
    m_eye.plot()->setMask(std::nullopt);
    if (m_mask)
        m_reason = density::Withheld::TooFew;
}

void MaskChoice::place(const EyeFiguredPtr& figured)
{
    if (!m_mask || !m_eye.isOn() || !figured || (!m_reason && m_placedAt >= mostPlaced))
        return;
    density::Withheld reason;
    const auto place = density::MaskTest::Place::of(*m_mask, figured->figures, &reason);
    if (!place) {
        m_reason = reason;
        return;
    }
    m_reason.reset();
    m_placedAt = figured->allSymbols;
    m_place = *place;
    show();
}

void MaskChoice::show()
{
    m_eye.plot()->setMask(m_mask, m_place.instant, m_place.low, m_place.high);
}

std::optional<density::MaskTest::Result> MaskChoice::result() const
{
    return m_mask && m_eye.isOn() && !m_reason ? m_eye.plot()->maskResult() : std::nullopt;
}

QString MaskChoice::text() const
{
    if (!m_mask)
        return QString();
    if (m_reason)
        return density::textOf(*m_reason);
    const auto result = this->result();
    if (!result)
        return QString();
    using Verdict = density::MaskTest::Verdict;
    const QString verdict = result->verdict == Verdict::Pass   ? tr("pass")
                            : result->verdict == Verdict::Fail ? tr("FAIL")
                                                               : tr("running");
    return tr("%1, %2 hits in %3 symbols")
        .arg(verdict, counted(result->hitCount), counted(result->symbolCount));
}
