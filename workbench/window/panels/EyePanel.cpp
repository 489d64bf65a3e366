// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/EyePanel.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/receiver/CharacterClock.h"
#include "workbench/window/panels/PanelForm.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace {

constexpr double bandwidthStep = 0.05;

} // namespace

EyePanel::EyePanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Eye"));
    m_symbols = new QSpinBox(this);
    m_symbols->setRange(1, EyeCut::maxSymbolCount);
    panelForm::addControl(*form, tr("Sym&bols"), m_symbols);
    m_bandwidth = new QDoubleSpinBox(this);
    m_bandwidth->setRange(EyeCut::minBandwidth - bandwidthStep, EyeCut::maxBandwidth);
    m_bandwidth->setSingleStep(bandwidthStep);
    m_bandwidth->setSpecialValueText(tr("no low-pass"));
    m_bandwidth->setToolTip(tr("Where a low-pass before the eye is 3 dB down, as a part of the "
                               "symbol rate"));
    panelForm::addControl(*form, tr("Band&width"), m_bandwidth);
    m_characters = new QSpinBox(this);
    m_characters->setRange(CharacterClock::minBits - 1, CharacterClock::maxBits);
    m_characters->setSpecialValueText(tr("off"));
    m_characters->setSuffix(tr(" bits"));
    m_characters->setToolTip(tr("Follows each start bit of an asynchronous serial line, with so "
                                "many bits after it"));
    panelForm::addControl(*form, tr("Characters"), m_characters);
    for (QAbstractSpinBox* box :
         std::initializer_list<QAbstractSpinBox*>{m_symbols, m_bandwidth, m_characters})
        box->setKeyboardTracking(false);
    m_clock = panelForm::addFact(*form, tr("Clock"));
    connect(m_symbols, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int count) {
        m_settings.symbolCount = count;
        emit chosen(m_settings);
    });
    connect(m_bandwidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double part) {
                m_settings.bandwidth = part < EyeCut::minBandwidth ? 0.0 : part;
                emit chosen(m_settings);
            });
    connect(m_characters, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int bits) {
        m_settings.characterBits =
            bits < CharacterClock::minBits ? std::nullopt : std::optional(bits);
        emit chosen(m_settings);
    });
}

void EyePanel::show(const SignalFeed& feed)
{
    const EyeCut& cut = feed.eye().cut();
    m_settings = {cut.symbolCount, cut.bandwidth, feed.receiver().characterBits};
    const QSignalBlocker quietSymbols(m_symbols);
    const QSignalBlocker quietBandwidth(m_bandwidth);
    const QSignalBlocker quietCharacters(m_characters);
    m_symbols->setValue(m_settings.symbolCount);
    m_bandwidth->setValue(m_settings.bandwidth);
    m_characters->setValue(m_settings.characterBits.value_or(m_characters->minimum()));

    const QString clocks[] = {tr("known"), tr("recovered"), tr("none", "clock of the symbols")};
    const bool hasSymbols = cut.hasSymbols();
    const bool isKnown = feed.source().firstSymbol && !feed.isSymbolRateGiven();
    m_symbols->setEnabled(hasSymbols);
    m_bandwidth->setEnabled(hasSymbols);
    m_characters->setEnabled(hasSymbols && !isKnown && !feed.receiver().isOn);
    m_clock->setText(clocks[!hasSymbols ? 2 : isKnown ? 0 : 1]);
}
