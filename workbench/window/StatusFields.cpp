// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/StatusFields.h"

#include "workbench/player/Hints.h"
#include "workbench/player/Units.h"

#include <QLabel>
#include <QTextDocument>

#include <cmath>

namespace {

constexpr int fieldMargin = 10;

} // namespace

/// A text that is elided when it does not fit, instead of asking for more room.
class StatusFields::ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget* parent)
        : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
    }
    void say(const QString& text)
    {
        if (text == m_whole)
            return;
        m_whole = text;
        setToolTip(Qt::convertFromPlainText(text)); // or Qt might take it for HTML
        setText(fontMetrics().elidedText(m_whole, Qt::ElideMiddle, width()));
    }
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        setText(fontMetrics().elidedText(m_whole, Qt::ElideMiddle, width()));
    }

private:
    QString m_whole;
};

StatusFields::StatusFields(QWidget* parent)
    : QStatusBar(parent)
    , m_source(new ElidedLabel(this))
{
    setSizeGripEnabled(false);
    setContentsMargins(fieldMargin, 0, 0, 0);
    addWidget(m_source, 1);
    m_sampleRate = addField(units::rate(888.888e3, "Hz"), QString());
    m_frameRate = addField(tr("%1 fps").arg(QStringLiteral("88.8")),
                           tr("Pictures of the first view in a second"));
    m_leftOut = addField(tr("%1 % left out").arg(QStringLiteral("< 88")), QString());
}

QLabel* StatusFields::addField(const QString& longest, const QString& toolTip)
{
    auto* label = new QLabel(this);
    label->setFixedWidth(label->fontMetrics().horizontalAdvance(longest) + 2 * fieldMargin);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setContentsMargins(0, 0, fieldMargin, 0);
    label->setToolTip(toolTip);
    addPermanentWidget(label);
    return label;
}

void StatusFields::setSource(const QString& name)
{
    m_name = name;
    setTrouble(std::nullopt);
}

void StatusFields::setSampleRate(double shown, double source)
{
    m_sampleRate->setText(units::rate(shown, "Hz"));
    m_sampleRate->setToolTip(
        shown == source
            ? tr("Sample rate")
            : tr("Sample rate of what is shown; the source has %1").arg(units::rate(source, "Hz")));
}

void StatusFields::setTrouble(const std::optional<Message>& trouble)
{
    m_source->say(trouble ? m_name + QStringLiteral(": ") + Hints::text(*trouble) : m_name);
}

void StatusFields::setFrameRate(std::optional<double> rate)
{
    m_frameRate->setText(
        tr("%1 fps").arg(rate ? QString::number(*rate, 'f', 1) : QStringLiteral("–")));
}

void StatusFields::setLeftOut(std::optional<double> part, std::int64_t gaps)
{
    const double percent = 100.0 * part.value_or(0.0);
    const QString text = percent > 0.0 && percent < 1.0
                             ? QStringLiteral("< 1")
                             : QString::number(static_cast<int>(std::floor(percent)));
    m_leftOut->setText(part ? tr("%1 % left out").arg(text) : QString());
    m_leftOut->setToolTip(
        part ? tr("Part of the signal that came too fast or was lost, in %1 gaps").arg(gaps)
             : QString());
}
