// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/SignalPanel.h"

#include "workbench/player/Hints.h"
#include "workbench/player/Player.h"
#include "workbench/player/Units.h"
#include "workbench/window/panels/PanelForm.h"
#include "workbench/window/panels/QuantityEditor.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

SignalPanel::SignalPanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Signal"));
    m_sampleRate = panelForm::addFact(*form, tr("Sample rate"));
    m_symbolRate = new FrequencyEditor(QStringLiteral("Bd"), this);
    panelForm::addControl(*form, tr("S&ymbol rate"), m_symbolRate);
    connect(m_symbolRate, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double symbolRate) {
                m_settings.symbolRate = symbolRate;
                emit chosen(m_settings);
            });
    addEstimate(form);
    m_length = panelForm::addFact(*form, tr("Length"));
    addChannel(form);
}

void SignalPanel::addEstimate(QFormLayout* form)
{
    auto* row = new QWidget(this);
    m_estimate = new QPushButton(tr("Est&imate"), row);
    m_estimate->setToolTip(tr("Looks for the symbol rate in the samples about the present time"));
    m_estimateText = new QLabel(row);
    panelForm::reserveRoom(*m_estimateText, verdicts(0.88));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_estimate);
    line->addWidget(m_estimateText, 1);
    form->addRow(QString(), row);
    connect(m_estimate, &QPushButton::clicked, this, [this] {
        Settings settings = m_settings;
        settings.estimatesSymbolRate = true;
        emit chosen(settings);
    });
}

void SignalPanel::addChannel(QFormLayout* form)
{
    auto* row = new QWidget(this);
    m_channel = new QSpinBox(row);
    m_channel->setAccessibleName(tr("Channel"));
    m_subtracted = new QComboBox(row);
    m_subtracted->setAccessibleName(tr("Channel that is subtracted"));
    m_subtracted->setToolTip(m_subtracted->accessibleName());
    m_channelCount = new QLabel(row);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_channel);
    line->addWidget(m_subtracted);
    line->addWidget(m_channelCount, 1);
    panelForm::addControl(*form, tr("&Channel"), row);
    static_cast<QLabel*>(form->labelForField(row))->setBuddy(m_channel);
    connect(m_channel, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int channel) { choose(channel - 1); });
    connect(m_subtracted, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        choose({m_channel->value() - 1, m_subtracted->itemData(index).toInt()});
    });
}

void SignalPanel::choose(const ChannelChoice& channel)
{
    m_settings.channel = channel;
    emit chosen(m_settings);
}

/// Texts for the verdicts of an estimate of the symbol rate, in order.
QStringList SignalPanel::verdicts(double confidence)
{
    return {tr("none found"), tr("unsure, %1").arg(confidence, 0, 'f', 2), tr("sure")};
}

void SignalPanel::showEstimate(const std::optional<SymbolRateEstimate>& estimate)
{
    QString text;
    if (estimate)
        text = verdicts(estimate->confidence)[static_cast<int>(estimate->verdict)];
    m_estimateText->setText(text);
    m_estimateText->setToolTip(estimate ? Hints::text(estimate->message()) : QString());
}

void SignalPanel::show(const Player& player)
{
    const SignalFeed& feed = player.feed();
    m_settings = {feed.channel(), feed.symbolRate().value_or(0.0), false};
    m_sampleRate->setText(units::rate(feed.source().sampleRate, "Hz"));
    QString length = player.kind() == Player::Kind::Recording ? tr("unknown") : tr("endless");
    if (feed.source().isLive)
        length = tr("live");
    if (const auto seconds = feed.transport().length())
        length = units::time(*seconds, *seconds);
    m_length->setText(length);
    showSymbolRate(player);
    showChannel(player);
}

void SignalPanel::showChannel(const Player& player)
{
    const SignalFeed& feed = player.feed();
    const int count = feed.source().valueCount();
    const ChannelChoice& channel = feed.channel();
    const QSignalBlocker quietChannel(m_channel);
    m_channel->setRange(1, count);
    m_channel->setValue(channel.value + 1);
    m_channel->setVisible(count > 1);
    m_channelCount->setText(count > 1 ? tr("of %1").arg(count) : QStringLiteral("1"));
    if (feed.source().isComplex && !feed.format().isDemodulated)
        m_channelCount->setText(m_channelCount->text() +
                                QLatin1String(channel.value % 2 == 0 ? ": I" : ": Q"));
    m_subtracted->clear();
    m_subtracted->addItem(tr("alone"), -1);
    for (int other = 0; other < count; ++other) {
        if (other != channel.value)
            m_subtracted->addItem(
                QChar(0x2212) + QString(QChar(0x2009)) + QString::number(other + 1), other);
    }
    m_subtracted->setCurrentIndex(m_subtracted->findData(channel.subtracted));
    m_subtracted->setVisible(count > 1 && (!feed.source().isComplex || channel.isDifference()));
}

void SignalPanel::showSymbolRate(const Player& player)
{
    const SignalFeed& feed = player.feed();
    const bool isBuiltIn = player.kind() == Player::Kind::BuiltIn;
    m_estimate->setEnabled(!feed.source().isLive && feed.transport().length());
    const QSignalBlocker quiet(m_symbolRate);
    m_symbolRate->setSpecialValueText(isBuiltIn ? QString() : tr("unknown"));
    if (isBuiltIn)
        m_symbolRate->setRange(NrzSettings::minSymbolRate, NrzSettings::maxSymbolRate);
    else
        m_symbolRate->setRange(0.0, feed.source().sampleRate);
    m_symbolRate->setValue(m_settings.symbolRate);
}
