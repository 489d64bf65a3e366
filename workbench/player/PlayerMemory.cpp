// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Player.h"

#include "platform/values/Settings.h"

#include <algorithm>
#include <cmath>

namespace {

const QString group = QStringLiteral("Parameters");
const QString eyeSymbolsKey = QStringLiteral("EyeSymbols");
const QString eyeBandwidthKey = QStringLiteral("EyeBandwidth");
const QString speedKey = QStringLiteral("Speed");
const QString repeatKey = QStringLiteral("Repeat");
const QString spanKey = QStringLiteral("Span");
const QString spanRateKey = QStringLiteral("SpanSampleRate");
const QString countingKey = QStringLiteral("AxisCountsSymbols");
const QString shiftKey = QStringLiteral("ReceiverShift");
const QString channelWidthKey = QStringLiteral("ReceiverChannelWidth");
const QString demodulationKey = QStringLiteral("ReceiverDemodulation");
const QString gainKey = QStringLiteral("ReceiverGainControl");
const QString squelchKey = QStringLiteral("ReceiverSquelch");
const QString rollOffKey = QStringLiteral("ReceiverRollOff");
const QString timingKey = QStringLiteral("ReceiverTiming");
const QString modulationKey = QStringLiteral("ReceiverModulation");
const QString filterKey = QStringLiteral("ReceiverFilter");
const QString symbolsOnlyKey = QStringLiteral("ReceiverSymbolsOnly");
const QString dcKey = QStringLiteral("ReceiverRemovesDc");

} // namespace

void Player::keep() const
{
    values::Settings settings;
    settings.beginGroup(group);
    settings.setValue(eyeSymbolsKey, m_feed.eye().cut().symbolCount);
    settings.setValue(eyeBandwidthKey, m_feed.eye().cut().bandwidth);
    settings.setValue(speedKey, m_keptSpeed);
    settings.setValue(repeatKey, m_feed.transport().repeat());
    settings.setValue(spanKey, m_keptSpan);
    settings.setValue(spanRateKey, m_keptSpanRate);
    settings.setValue(countingKey, m_feed.time().countsSymbols());
    const ReceiverSettings& receiver = m_feed.receiver();
    settings.setValue(shiftKey, receiver.shift);
    settings.setValue(channelWidthKey, receiver.bandwidth.value_or(0.0));
    settings.setValue(demodulationKey, static_cast<int>(receiver.demodulation));
    settings.setValue(gainKey, receiver.hasGainControl);
    settings.setValue(squelchKey, receiver.squelch.value_or(ReceiverSettings::minSquelch));
    settings.setValue(filterKey, receiver.filter ? static_cast<int>(*receiver.filter) : -1);
    settings.setValue(dcKey, receiver.removesDc);
    settings.setValue(symbolsOnlyKey, receiver.hasAutoSquelch);
    settings.setValue(rollOffKey, receiver.rollOff.value_or(0.0));
    settings.setValue(timingKey, receiver.hasTimingRecovery);
    settings.setValue(modulationKey,
                      receiver.modulation ? static_cast<int>(*receiver.modulation) : -1);
}

void Player::restore()
{
    values::Settings settings;
    settings.beginGroup(group);
    const auto number = [&settings](const QString& key, double usual) {
        bool isNumber = false;
        const double value = settings.value(key, usual).toDouble(&isNumber);
        return isNumber && !std::isnan(value) ? value : usual;
    };
    const EyeCut cut = m_feed.eye().cut();
    m_feed.eye().setSymbolCount(settings.value(eyeSymbolsKey, cut.symbolCount).toInt());
    const double eyeBandwidth = number(eyeBandwidthKey, cut.bandwidth);
    m_feed.eye().setBandwidth(eyeBandwidth < EyeCut::minBandwidth ? 0.0 : eyeBandwidth);
    m_feed.transport().setSpeed(number(speedKey, m_keptSpeed));
    m_keptSpeed = m_feed.transport().speed();
    m_feed.transport().setRepeat(settings.value(repeatKey, m_feed.transport().repeat()).toBool());
    m_keptSpan = number(spanKey, 0.0);
    m_keptSpanRate = number(spanRateKey, 0.0);
    m_feed.setCountingSymbols(settings.value(countingKey, true).toBool());
    // The receiver is off at first, as the next recording may be of another kind.
    ReceiverSettings receiver;
    const auto unlessZero = [&number](const QString& key) {
        const double value = number(key, 0.0);
        return value > 0.0 ? std::optional<double>(value) : std::nullopt;
    };
    receiver.shift = number(shiftKey, 0.0);
    receiver.bandwidth = unlessZero(channelWidthKey);
    const int demodulation = settings.value(demodulationKey, 0).toInt();
    receiver.demodulation =
        static_cast<ReceiverSettings::Demodulation>(std::clamp(demodulation, 0, 2));
    receiver.hasGainControl = settings.value(gainKey, true).toBool();
    const double squelch = number(squelchKey, ReceiverSettings::minSquelch);
    if (squelch > ReceiverSettings::minSquelch)
        receiver.squelch = squelch;
    receiver.filter = ReceiverSettings::filterOf(
        ReceiverSettings::filterNames().value(settings.value(filterKey, -1).toInt()));
    receiver.removesDc = settings.value(dcKey, false).toBool();
    receiver.hasAutoSquelch = settings.value(symbolsOnlyKey, false).toBool();
    receiver.rollOff = unlessZero(rollOffKey);
    receiver.hasTimingRecovery = settings.value(timingKey, true).toBool();
    receiver.modulation = modulationKinds::named(
        modulationKinds::names().value(settings.value(modulationKey, -1).toInt()));
    m_feed.setReceiver(receiver);
    emit changed();
}
