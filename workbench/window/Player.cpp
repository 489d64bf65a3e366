// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Player.h"

#include "platform/values/PlainSettings.h"

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
const QString shiftKey = QStringLiteral("ReceiverShift");
const QString channelWidthKey = QStringLiteral("ReceiverChannelWidth");
const QString demodulationKey = QStringLiteral("ReceiverDemodulation");
const QString gainKey = QStringLiteral("ReceiverGainControl");
const QString squelchKey = QStringLiteral("ReceiverSquelch");
const QString rollOffKey = QStringLiteral("ReceiverRollOff");
const QString timingKey = QStringLiteral("ReceiverTiming");
const QString modulationKey = QStringLiteral("ReceiverModulation");

constexpr double demoSpan = 80.0; // symbols
constexpr double fullScale = 1.1; // a little more than the largest level

} // namespace

Player::Player(QObject* parent)
    : QObject(parent)
{}

Player::~Player() = default;

bool Player::open(Recording recording, const ChannelChoice& channel,
                  std::optional<double> symbolRate, QString& why)
{
    if (channel.last() >= recording.source->valueCount()) {
        why = tr("there is no channel %1; the recording has %2")
                  .arg(channel.last() + 1)
                  .arg(recording.source->valueCount());
        return false;
    }
    m_feed.open(std::move(recording.source), channel, symbolRate);
    m_details = recording.details;
    useKeptSpan();
    showFullScale(); // until there is a signal to fit the axis to
    emit opened(recording.notices);
    return true;
}

void Player::openBuiltIn(const NrzSettings& settings)
{
    m_builtIn = settings;
    m_feed.open(std::make_unique<NrzSource>(m_builtIn), 0, std::nullopt);
    m_details.clear();
    useKeptSpan();
    showFullScale();
    emit opened({});
}

void Player::openDemo(const ModulationSettings& settings)
{
    m_demo = settings;
    m_feed.open(std::make_unique<ModulationSource>(m_demo), 0, std::nullopt);
    m_feed.setSpan(demoSpan / *m_feed.source()->symbolRate());
    m_details.clear();
    showFullScale();
    emit opened({});
}

/// Changes the source that plays, if it is one of those.
template<class Source, class Work>
void Player::change(Work work)
{
    if (!m_feed.input())
        return;
    m_feed.changeInput([&work](SignalSource& source) {
        if (auto* fitting = dynamic_cast<Source*>(&source))
            work(*fitting);
    });
}

void Player::setNoise(double rms)
{
    m_builtIn.noise = rms;
    change<NrzSource>([rms](NrzSource& source) { source.setNoise(rms); });
}

void Player::setJitter(double rms)
{
    m_builtIn.jitter = rms;
    change<NrzSource>([rms](NrzSource& source) { source.setJitter(rms); });
}

void Player::setBandwidth(double part)
{
    m_builtIn.bandwidth = part;
    change<NrzSource>([part](NrzSource& source) { source.setBandwidth(part); });
}

void Player::setLevelCount(int count)
{
    m_builtIn.levelCount = count;
    restartBuiltIn();
}

void Player::setFrame(int symbolCount)
{
    m_builtIn.frameSymbolCount = symbolCount;
    restartBuiltIn();
}

void Player::setSnr(double decibels)
{
    m_demo.snrDb = decibels;
    change<ModulationSource>([=](ModulationSource& source) { source.setSnr(decibels); });
}

void Player::setPhaseNoise(double rms)
{
    m_demo.phaseNoise = rms;
    change<ModulationSource>([=](ModulationSource& source) { source.setPhaseNoise(rms); });
}

void Player::setCarrierError(double cyclesPerSymbol)
{
    m_demo.carrierError = cyclesPerSymbol;
    change<ModulationSource>(
        [=](ModulationSource& source) { source.setCarrierError(cyclesPerSymbol); });
}

void Player::restartBuiltIn()
{
    const bool wasPlaying = m_feed.isPlaying();
    openBuiltIn(m_builtIn);
    if (wasPlaying)
        m_feed.play();
}

void Player::setSymbolRate(double symbolRate)
{
    if (dynamic_cast<const NrzSource*>(m_feed.input())) {
        m_builtIn.symbolRate = symbolRate;
        restartBuiltIn();
        return;
    }
    m_feed.setSymbolRate(symbolRate > 0.0 ? std::optional<double>(symbolRate) : std::nullopt);
    emit clockChanged();
    emit changed();
    emit outdated();
}

void Player::setReceiver(const ReceiverSettings& settings)
{
    m_feed.setReceiver(settings);
    fitLevels();
    emit changed();
    emit clockChanged();
    emit outdated();
}

void Player::setChannel(const ChannelChoice& channel)
{
    m_feed.setChannel(channel);
    fitLevels();
    emit changed();
    emit outdated();
}

void Player::setSpan(double seconds)
{
    m_feed.setSpan(seconds);
    m_keptSpan = m_feed.span();
    m_keptSpanRate = m_feed.scale().sampleRate;
    emit changed();
    emit outdated();
}

void Player::setSpeed(double speed)
{
    m_feed.setSpeed(speed);
    emit changed();
}

void Player::rewind()
{
    m_feed.rewind();
    emit changed();
}

void Player::seek(double seconds)
{
    seconds = std::max(seconds, 0.0);
    if (const auto length = m_feed.length())
        seconds = std::min(seconds, *length);
    if (m_feed.isPlaying() || m_feed.isLive()) {
        m_feed.seek(seconds);
    } else {
        const double start = std::max(seconds - m_feed.span(), 0.0);
        m_feed.seek(start);
        m_feed.playThrough(seconds - start);
    }
    emit changed();
}

void Player::setEyeSymbolCount(int count)
{
    m_feed.eye().setSymbolCount(count);
    emit changed();
    emit outdated();
}

void Player::setEyeBandwidth(double bandwidth)
{
    m_feed.eye().setBandwidth(bandwidth);
    emit outdated();
}

void Player::setTrajectory(bool wanted)
{
    m_feed.iq().setTrajectory(wanted);
    emit changed();
    emit outdated();
}

void Player::showFullScale() { m_feed.setLevels(-fullScale, fullScale); }

void Player::useKeptSpan()
{
    if (m_keptSpanRate == m_feed.scale().sampleRate)
        m_feed.setSpan(m_keptSpan);
}

void Player::keep() const
{
    values::Settings settings;
    settings.beginGroup(group);
    settings.setValue(eyeSymbolsKey, m_feed.eye().cut().symbolCount);
    settings.setValue(eyeBandwidthKey, m_feed.eye().cut().bandwidth);
    settings.setValue(speedKey, m_feed.speed());
    settings.setValue(repeatKey, m_feed.repeat());
    settings.setValue(spanKey, m_keptSpan);
    settings.setValue(spanRateKey, m_keptSpanRate);
    const ReceiverSettings& receiver = m_feed.receiver();
    settings.setValue(shiftKey, receiver.shift);
    settings.setValue(channelWidthKey, receiver.bandwidth.value_or(0.0));
    settings.setValue(demodulationKey, static_cast<int>(receiver.demodulation));
    settings.setValue(gainKey, receiver.hasGainControl);
    settings.setValue(squelchKey, receiver.squelch.value_or(ReceiverSettings::minSquelch));
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
    m_feed.setSpeed(number(speedKey, m_feed.speed()));
    m_feed.setRepeat(settings.value(repeatKey, m_feed.repeat()).toBool());
    m_keptSpan = number(spanKey, 0.0);
    m_keptSpanRate = number(spanRateKey, 0.0);
    // It is off at first: the next recording may be of another kind.
    ReceiverSettings receiver;
    const auto unlessZero = [&number](const QString& key) {
        const double value = number(key, 0.0);
        constexpr double smallest = 1e-6; // Hz, or a roll-off: below it, no filter can be made
        return value >= smallest ? std::optional<double>(value) : std::nullopt;
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
    receiver.rollOff = unlessZero(rollOffKey);
    receiver.hasTimingRecovery = settings.value(timingKey, true).toBool();
    receiver.modulation = ReceiverSettings::modulationOf(
        ReceiverSettings::modulationNames().value(settings.value(modulationKey, -1).toInt()));
    m_feed.setReceiver(receiver);
    emit changed();
}

QStringList Player::information() const { return Recording::describe(*m_feed.input()) + m_details; }

QString Player::eyeNotice() const
{
    if (const QString flaw = m_feed.receiverFlaw(); !flaw.isEmpty())
        return flaw;
    if (m_feed.eye().cut().clock != EyeCut::Clock::None)
        return QString();
    if (m_feed.scale().unit != TimeScale::Unit::Symbol)
        return tr("the symbol rate is not known, so the eye is cut every %1 samples; give it by "
                  "--symbol-rate or beside the views")
            .arg(EyeCut::fixedLength);
    return tr("an eye takes %1 to %2 samples of a symbol; it is cut every %3 samples until another "
              "symbol rate is given")
        .arg(SymbolTiming::minSamplesPerSymbol)
        .arg(SymbolTiming::maxSamplesPerSymbol)
        .arg(EyeCut::fixedLength);
}
