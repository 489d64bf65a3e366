// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Player.h"

#include "workbench/player/Hints.h"
#include "workbench/player/Speeds.h"
#include "workbench/receiver/SymbolTiming.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double fullScale = 1.1; // a little more than the largest level

} // namespace

Player::Player(QObject* parent)
    : QObject(parent)
{}

Player::~Player() = default;

Result<void> Player::open(Recording recording, const ChannelChoice& channel,
                          std::optional<double> symbolRate)
{
    if (channel.last() >= recording.source->facts().valueCount())
        return failure(tr("there is no channel %1; the recording has %2")
                           .arg(channel.last() + 1)
                           .arg(recording.source->facts().valueCount()));
    start(std::move(recording.source), Kind::Recording, channel, symbolRate);
    m_information += recording.details;
    showAsNew(Hints::texts(recording.notices));
    return {};
}

void Player::start(std::unique_ptr<SignalSource> source, Kind kind, const ChannelChoice& channel,
                   std::optional<double> symbolRate)
{
    m_kind = kind;
    m_builtInSource = nullptr;
    m_demoSource = nullptr;
    m_information = Recording::describe(*source);
    m_confidence.reset();
    m_feed.open(std::move(source), channel, symbolRate);
}

void Player::showAsNew(const QStringList& notices)
{
    if (m_keptSpanRate == m_feed.scale().sampleRate)
        m_feed.setSpan(m_keptSpan);
    const auto length = m_feed.transport().length();
    m_feed.transport().setSpeed(speeds::isShort(length) ? speeds::of(length).front() : m_keptSpeed);
    showFullScale(); // until there is a signal to which the axes can be fitted
    m_feed.fitLevels();
    emit opened(notices);
    missSymbolRate();
}

void Player::missSymbolRate()
{
    if (m_isEstimating && m_feed.isOpen() && !m_feed.source().isLive &&
        m_feed.transport().length() && !m_feed.symbolRate())
        emit symbolRateMissed();
}

void Player::openBuiltIn(const NrzSettings& settings)
{
    m_builtIn = settings;
    auto source = std::make_unique<NrzSource>(m_builtIn);
    NrzSource* const opened = source.get();
    start(std::move(source), Kind::BuiltIn, 0, std::nullopt);
    m_builtInSource = opened;
    showAsNew({});
}

void Player::openDemo(const ModulationSettings& settings)
{
    m_demo = settings;
    auto source = std::make_unique<ModulationSource>(m_demo);
    ModulationSource* const opened = source.get();
    start(std::move(source), Kind::Demo, 0, std::nullopt);
    m_demoSource = opened;
    showAsNew({});
}

void Player::setBuiltIn(const NrzSettings& settings)
{
    const NrzSettings before = std::exchange(m_builtIn, settings);
    if (settings.levelCount != before.levelCount || settings.symbolRate != before.symbolRate ||
        settings.frameSymbolCount != before.frameSymbolCount) {
        restartBuiltIn();
    } else if (m_builtInSource) {
        m_feed.changeSource([&](SignalSource&) {
            m_builtInSource->setNoise(settings.noise);
            m_builtInSource->setJitter(settings.jitter);
            if (settings.bandwidth != before.bandwidth) // its filter has to settle again
                m_builtInSource->setBandwidth(settings.bandwidth);
        });
    }
}

void Player::setDemo(const ModulationSettings& settings)
{
    m_demo = settings;
    if (!m_demoSource)
        return;
    m_feed.changeSource([&](SignalSource&) {
        m_demoSource->setSnr(settings.snrDb);
        m_demoSource->setPhaseNoise(settings.phaseNoise);
        m_demoSource->setCarrierError(settings.carrierError);
    });
}

void Player::restartBuiltIn()
{
    const bool wasPlaying = m_feed.transport().isPlaying();
    openBuiltIn(m_builtIn);
    if (wasPlaying)
        m_feed.transport().play();
}

void Player::setSymbolRate(double symbolRate)
{
    m_confidence.reset();
    if (m_kind == Kind::BuiltIn) {
        m_builtIn.symbolRate = symbolRate;
        restartBuiltIn();
        return;
    }
    m_feed.setSymbolRate(symbolRate > 0.0 ? std::optional<double>(symbolRate) : std::nullopt);
    m_feed.fitLevels();
    emit clockChanged();
    emit changed();
    emit outdated();
}

void Player::setReceiver(const ReceiverSettings& settings)
{
    m_feed.setReceiver(settings);
    m_feed.fitLevels();
    emit changed();
    emit clockChanged();
    emit outdated();
    missSymbolRate(); // which may be found in the signal that is received now
}

void Player::setChannel(const ChannelChoice& channel)
{
    m_feed.setChannel(channel);
    m_feed.fitLevels();
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

void Player::setCountingSymbols(bool wanted)
{
    m_feed.setCountingSymbols(wanted);
    emit changed();
}

void Player::setSpeed(double speed)
{
    m_feed.transport().setSpeed(speed);
    if (!speeds::isShort(m_feed.transport().length())) // the next signal is hardly as short
        m_keptSpeed = m_feed.transport().speed();
    emit changed();
}

void Player::rewind()
{
    m_feed.transport().seek(0.0);
    emit changed();
}

void Player::seek(double seconds)
{
    seconds = std::max(seconds, 0.0);
    if (const auto length = m_feed.transport().length())
        seconds = std::min(seconds, *length);
    if (m_feed.transport().isPlaying() || m_feed.source().isLive) {
        m_feed.transport().seek(seconds);
    } else {
        const double start = std::max(seconds - m_feed.span(), 0.0);
        m_feed.transport().seek(start);
        m_feed.transport().playThrough(seconds - start);
    }
    emit changed();
}

void Player::fixGate(double from, double to, std::optional<double> span)
{
    if (m_feed.source().isLive || !(to > from))
        return;
    constexpr auto most = static_cast<double>(Gate::maxSampleCount);
    to = std::min(
        {to, from + most / m_feed.format().sampleRate, m_feed.transport().length().value_or(to)});
    m_feed.fixGate(from, to);
    m_feed.setSpan(span.value_or(to - from));
    emit changed();
    emit gateFixed();
}

void Player::gateFromHere()
{
    const Gate& gate = m_feed.gate();
    const double here = m_feed.transport().time();
    fixGate(here, gate.isFixed() && gate.fixedTo() > here ? gate.fixedTo() : here + m_feed.span());
}

void Player::gateToHere()
{
    const Gate& gate = m_feed.gate();
    const double here = m_feed.transport().time();
    const double shown = std::max(here - m_feed.span(), 0.0);
    fixGate(gate.isFixed() && gate.fixedFrom() < here ? gate.fixedFrom() : shown, here);
}

void Player::gateAll() { fixGate(0.0, m_feed.transport().length().value_or(0.0)); }

void Player::playGate()
{
    const Gate& gate = m_feed.gate();
    m_feed.transport().seek(gate.fixedFrom());
    m_feed.transport().playThrough(gate.fixedTo() - gate.fixedFrom());
    emit changed();
}

void Player::releaseGate()
{
    m_feed.releaseGate();
    emit changed();
    emit outdated();
}

Measurement::Setup Player::setup() const
{
    Measurement::Setup setup;
    setup.format = m_feed.format();
    setup.sampleRate = m_feed.source().sampleRate;
    setup.symbolRate = m_feed.symbolRate();
    using Origin = Measurement::Origin;
    const Origin told = m_feed.isSymbolRateGiven() ? Origin::Given : Origin::Metadata;
    setup.origin = m_confidence ? Origin::Estimated : told;
    setup.confidence = m_confidence;
    setup.eyeBandwidth = m_feed.eye().cut().bandwidth;
    const ReceiverSettings& receiver = m_feed.receiver();
    if (m_kind == Kind::Demo)
        setup.modulation = m_demo.modulation;
    else if (receiver.isOn && !setup.format.isDemodulated)
        setup.modulation = receiver.modulation;
    setup.hasCarrierRecovery = m_kind == Kind::Recording && receiver.isOn && setup.modulation;
    setup.isFm = !m_feed.levelUnit().isEmpty();
    return setup;
}

void Player::fitLevels()
{
    m_feed.fitLevels();
    emit changed();
}

void Player::setEye(int symbolCount, double bandwidth)
{
    const EyeCut before = m_feed.eye().cut();
    if (symbolCount != before.symbolCount) {
        m_feed.eye().setSymbolCount(symbolCount);
        emit changed();
        emit lookChanged();
    }
    if (bandwidth != before.bandwidth) {
        m_feed.eye().setBandwidth(bandwidth);
        emit lookChanged();
    }
}

void Player::setTrajectory(bool wanted)
{
    m_feed.iq().setTrajectory(wanted);
    m_feed.iq().fitLevels();
    emit changed();
    emit lookChanged();
}

void Player::showFullScale() { m_feed.setLevels(-fullScale, fullScale); }

Result<void> Player::checkEye() const
{
    if (const auto receiver = m_feed.checkReceiver(); !receiver)
        return receiver;
    if (m_feed.eye().cut().hasSymbols() || !m_feed.symbolRate())
        return {};
    return failure(tr("an eye takes %1 to %2 samples of a symbol; give another symbol rate")
                       .arg(SymbolTiming::minSamplesPerSymbol)
                       .arg(SymbolTiming::maxSamplesPerSymbol));
}
