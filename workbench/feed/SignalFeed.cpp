// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/SignalFeed.h"

#include "workbench/sources/ModulationSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::int64_t maxCatchUp = 4;
constexpr double blocksPerPeriod = 4.0; // read at a time
constexpr double maxBlock = 32768.0;    // samples of one
constexpr double liveSeconds = 0.5;     // that may wait of a live signal
constexpr double maxLive = 4e6;         // samples of them
// Samples of the time diagram: more than these of a notification or of all that is shown are
// thinned out, unless fewer are left than a picture takes.
constexpr double manyOfPeriod = 16384.0;
constexpr double manyOfSpan = 2097152.0;
constexpr double fewOfSpan = 8192.0;
constexpr std::size_t measuredSamples = 65536;
constexpr std::ptrdiff_t keptSamples = 1 << 20;
constexpr auto frontPatience = std::chrono::milliseconds(100);
constexpr auto longTime = std::chrono::hours(1);
constexpr auto livePatience = std::chrono::seconds(5); // of who plays a live signal through

} // namespace

SignalFeed::SignalFeed(QObject* parent)
    : QObject(parent)
    , m_pacer(notificationRate, maxCatchUp)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        advance(m_clock.elapsed());
        if (m_playing)
            startTimer();
    });
}

SignalFeed::~SignalFeed() = default;

void SignalFeed::open(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
                      std::optional<double> symbolRate)
{
    pause();
    m_reader.reset();
    m_ahead.reset();
    m_channel = channel;
    m_symbolRate = symbolRate;
    m_watching = true;
    build(std::move(source));
    setScale();
    openReader(0);
    setSpan(m_scale.defaultSpan);
}

void SignalFeed::build(std::unique_ptr<SignalSource> source)
{
    m_input = source.get();
    m_received = nullptr;
    m_front = nullptr;
    const bool isLive = source->isLive();
    auto whenFull = isLive ? ReadAhead::WhenFull::Drop : ReadAhead::WhenFull::Wait;
    if (usedReceiver().isOn) {
        if (isLive) {
            auto front = std::make_unique<ReadAhead>(std::move(source), whenFull);
            front->setPatience(frontPatience);
            const double rate = m_input->sampleRate();
            front->setLengths(
                static_cast<std::size_t>(std::clamp(rate / 100.0, 1.0, maxBlock)),
                static_cast<std::size_t>(std::clamp(liveSeconds * rate, 1.0, maxLive)));
            m_front = front.get();
            source = std::move(front);
            whenFull = ReadAhead::WhenFull::Wait;
        }
        auto received =
            std::make_unique<ReceiverSource>(std::move(source), m_channel, usedReceiver());
        m_received = received.get();
        source = std::move(received);
    }
    m_ahead = std::make_unique<ReadAhead>(std::move(source), whenFull);
    m_ahead->setDiscarding(isLive && !m_playing);
    m_ahead->setPatience(isLive ? std::chrono::milliseconds(0) : m_patience);
}

/// Takes the source out of what is around it, and puts it into what is wanted now.
void SignalFeed::rebuild()
{
    const double time = this->time();
    m_reader.reset();
    std::unique_ptr<SignalSource> source = m_ahead->takeInput();
    if (m_received)
        source = m_received->takeInput();
    if (m_front) {
        const std::unique_ptr<SignalSource> front = std::move(source);
        source = m_front->takeInput();
    }
    build(std::move(source));
    setScale();
    openReader(std::llround(time * m_scale.sampleRate));
    setSpan(m_span);
    showNothing();
}

std::optional<double> SignalFeed::symbolRate() const
{
    if (m_symbolRate || !m_input)
        return m_symbolRate;
    return m_input->symbolRate();
}

ReceiverSettings SignalFeed::usedReceiver() const
{
    if (m_input->firstSymbol() || !receiverFlaw().isEmpty())
        return ReceiverSettings();
    ReceiverSettings settings = m_receiver;
    settings.symbolRate = symbolRate();
    return settings;
}

QString SignalFeed::receiverFlaw() const
{
    if (!m_input || m_input->firstSymbol())
        return QString();
    ReceiverSettings settings = m_receiver;
    settings.symbolRate = symbolRate();
    return settings.flaw(m_input->sampleRate());
}

void SignalFeed::setReceiver(const ReceiverSettings& settings)
{
    if (m_receiver == settings)
        return;
    m_receiver = settings;
    if (m_ahead)
        rebuild();
}

std::vector<StageReport> SignalFeed::receiverReports() const
{
    return m_received ? m_received->reports() : std::vector<StageReport>();
}

void SignalFeed::changeInput(const std::function<void(SignalSource&)>& work)
{
    const std::int64_t position = this->position();
    ReadAhead& reading = m_front ? *m_front : *m_ahead;
    reading.change([&](SignalSource&) { work(*m_input); });
    if (!isLive())
        openReader(position);
}

void SignalFeed::setPatience(std::chrono::milliseconds patience)
{
    m_patience = patience;
    if (m_ahead && !isLive())
        m_ahead->setPatience(patience);
}

void SignalFeed::setScale()
{
    std::optional<double> symbolRate;
    if (!m_received) // which says it itself
        symbolRate = m_symbolRate;
    m_scale = TimeScale::of(*m_ahead, symbolRate);
    m_eye.open(*m_ahead, symbolRate);
    m_iq.open(*m_ahead, symbolRate);
}

void SignalFeed::setSymbolRate(std::optional<double> symbolRate)
{
    m_symbolRate = symbolRate;
    if (m_receiver.isOn) {
        rebuild();
        return;
    }
    setScale();
    setSpan(m_span);
    m_eye.showNothing();
    m_iq.showNothing();
}

// A trace as long as the time shown is all that a view still has room for. Along zero it looks as a
// view does before the first sample.
void SignalFeed::showNothing()
{
    const double shown = m_span * m_scale.sampleRate / static_cast<double>(m_thinning.factor());
    std::vector<double> markers(static_cast<std::size_t>(std::ceil(shown)) + 1);
    markers.front() = static_cast<double>(markers.size());
    m_values.notify(std::vector<double>(markers.size()), markers);
    m_eye.showNothing();
    m_iq.showNothing();
}

/// Of a received signal I, or what was demodulated, unless Q was chosen.
ChannelChoice SignalFeed::shownChannel() const
{
    if (!m_received)
        return m_channel;
    return m_input->isComplex() && m_received->isComplex() ? m_channel.value % 2 : 0;
}

void SignalFeed::openReader(std::int64_t position)
{
    m_reader = std::make_unique<SegmentReader>(*m_ahead, shownChannel());
    m_reader->seek(position);
    m_thinning.restart();
    m_newest.clear();
    m_credit = 0.0;
    m_atEnd = false;
    chooseSegmentLength();
}

void SignalFeed::play()
{
    if (!m_ahead || m_playing)
        return;
    if (m_atEnd)
        rewind();
    m_playing = true;
    m_clock.start();
    m_pacer.start(0);
    m_ahead->setDiscarding(false);
    startTimer();
    emit playingChanged(true);
}

void SignalFeed::pause()
{
    if (!m_playing)
        return;
    m_playing = false;
    m_timer.stop();
    m_ahead->setDiscarding(isLive());
    emit playingChanged(false);
}

void SignalFeed::rewind()
{
    if (m_ahead)
        openReader(0);
}

void SignalFeed::seek(double seconds)
{
    if (!m_ahead || isLive() || std::isnan(seconds))
        return;
    constexpr double farthest = 1e18; // samples, whatever the time
    const double position = std::clamp(seconds * m_scale.sampleRate, 0.0, farthest);
    const auto last = m_ahead->sampleCount().value_or(static_cast<std::int64_t>(farthest));
    openReader(std::min(static_cast<std::int64_t>(position), last));
}

std::optional<double> SignalFeed::length() const
{
    const auto count = m_ahead ? m_ahead->sampleCount() : std::nullopt;
    return count ? std::optional(static_cast<double>(*count) / m_scale.sampleRate) : std::nullopt;
}

std::int64_t SignalFeed::dropCount() const
{
    return m_eye.dropCount() + (m_ahead ? m_ahead->lostBlockCount() : 0);
}

void SignalFeed::startTimer()
{
    const std::int64_t waitMs = m_pacer.nextMs() - m_clock.elapsed();
    m_timer.start(static_cast<int>(std::max<std::int64_t>(waitMs, 0)));
}

void SignalFeed::advance(std::int64_t elapsedMs)
{
    if (!m_playing)
        return;
    m_credit += static_cast<double>(m_pacer.takeDue(elapsedMs)) * samplesPerPeriod();
    m_credit += backlogToReduce();
    const double whole = std::floor(m_credit);
    m_credit -= static_cast<double>(deliver(static_cast<std::size_t>(whole)));
    m_credit =
        std::min(m_credit, std::max(static_cast<double>(maxCatchUp) * samplesPerPeriod(), 1.0));
    if (m_atEnd) {
        m_eye.finish();
        pause();
    }
}

void SignalFeed::playThrough(double seconds)
{
    if (!m_ahead)
        return;
    const bool repeat = std::exchange(m_repeat, false);
    m_ahead->setPatience(isLive() ? std::chrono::milliseconds(livePatience) : longTime);
    m_ahead->setDiscarding(false);
    const auto block = static_cast<std::size_t>(std::ceil(samplesPerPeriod()));
    auto left = static_cast<std::size_t>(std::ceil(seconds * m_scale.sampleRate));
    // Such segments that one ends where the time does, or a little later.
    const std::size_t segments = (left + m_reader->segmentLength() - 1) / m_reader->segmentLength();
    m_reader->setSegmentLength(left / std::max<std::size_t>(segments, 1) + 1);
    for (std::size_t got = 1; left > 0 && got > 0 && !m_atEnd; left -= std::min(left, got)) {
        got = deliver(std::min(left, block));
        m_eye.settle();
    }
    deliver(m_reader->openCount());
    m_eye.finish();
    m_ahead->setDiscarding(isLive() && !m_playing);
    m_ahead->setPatience(isLive() ? std::chrono::milliseconds(0) : m_patience);
    chooseSegmentLength();
    m_repeat = repeat;
}

double SignalFeed::samplesPerPeriod() const
{
    const double speed = isLive() ? 1.0 : m_speed;
    return std::min(m_scale.sampleRate * speed / notificationRate, TimeScale::maxBlockLength);
}

/// The clock of a live signal is not ours: what has piled up is taken little by little.
double SignalFeed::backlogToReduce() const
{
    if (!isLive())
        return 0.0;
    const double backlog = static_cast<double>(m_ahead->position() - m_reader->position()) +
                           static_cast<double>(m_ahead->waitingCount());
    const double wanted = 1.2 * m_segmentLength + 2.0 * samplesPerPeriod();
    return std::max((backlog - wanted) / 8.0, 0.0);
}

/// Delivers the next samples in one notification; fewer when the source has no more, and is then at
/// the end, or has them later.
/// @return samples of the signal.
std::size_t SignalFeed::deliver(std::size_t count)
{
    m_samples.clear();
    m_markers.clear();
    std::size_t done = 0;
    bool isFresh = false; // just started over: another end right away would go on for ever
    while (done < count && !m_atEnd && (isLive() || m_eye.makeRoom(m_patience))) {
        const std::size_t got = readOn(count - done);
        done += got;
        if (got > 0)
            isFresh = false;
        else if (!m_ahead->hasEnded())
            break;
        else {
            m_atEnd = !m_repeat || isFresh || !m_reader->seek(0);
            isFresh = true;
        }
    }
    if (m_watching && hasSignal()) {
        m_watching = false;
        emit signalSeen();
    }
    if (!m_samples.empty())
        m_values.notify(m_samples, m_markers);
    m_iq.notify();
    return done;
}

/// Reads the next samples; eye and constellation take them, too.
std::size_t SignalFeed::readOn(std::size_t count)
{
    const std::int64_t position = m_reader->position();
    m_part.clear();
    const std::size_t got = m_reader->read(count, m_part);
    if (got == 0)
        return 0;
    keep(m_part.samples);
    m_thinning.run(m_part.samples, m_part.markers, m_samples, m_markers);
    m_iq.take(position, m_part.i, m_part.q);
    m_eye.take(position, m_part.samples);
    return got;
}

void SignalFeed::keep(const std::vector<double>& samples)
{
    m_newest.insert(m_newest.end(), samples.begin(), samples.end());
    if (m_newest.size() > 2 * keptSamples)
        m_newest.erase(m_newest.begin(), m_newest.end() - keptSamples);
}

/// Samples of those kept that are of the time shown, the newest ones.
std::size_t SignalFeed::shownCount(std::size_t most) const
{
    const double shown = std::ceil(m_span * m_scale.sampleRate);
    most = static_cast<std::size_t>(std::min(shown, static_cast<double>(most)));
    return std::min(m_newest.size(), most);
}

std::vector<double> SignalFeed::shownSamples() const
{
    return {m_newest.end() - static_cast<std::ptrdiff_t>(shownCount(keptSamples)), m_newest.end()};
}

Measurements SignalFeed::measure() const
{
    Measurements result;
    const std::size_t count = shownCount(measuredSamples);
    result.level =
        LevelReadings::of(m_newest.data() + m_newest.size() - count, count, m_scale.sampleRate);
    result.eye = m_eye.measure();
    result.hasTraces = m_eye.hasEnough();
    const auto points = idealPoints();
    result.hasSymbols = m_iq.showsDecisions();
    result.hasModulation = !points.empty();
    if (result.hasModulation)
        result.constellation = m_iq.measure(points);
    for (const StageReport& report : receiverReports()) {
        for (const StageReport::Reading& reading : report.readings) {
            if (reading.quantity == StageReport::Quantity::CarrierOffset)
                result.carrierOffset = reading.value;
            if (reading.quantity == StageReport::Quantity::SymbolRateError)
                result.symbolRateError = reading.value;
        }
    }
    return result;
}

/// Of the modulation that is known: of the built-in signal, or as the receiver's settings say, also
/// where the signal's symbols need no receiver. None else.
std::vector<std::complex<double>> SignalFeed::idealPoints() const
{
    std::optional<ReceiverSettings::Modulation> modulation;
    if (const auto* demo = dynamic_cast<const ModulationSource*>(m_input); demo && !m_received)
        modulation = ReceiverSettings::modulationOf(
            ModulationSettings::names()[static_cast<int>(demo->settings().scheme)]);
    else if (m_receiver.isOn && m_ahead && m_ahead->isComplex())
        modulation = m_receiver.modulation;
    return modulation ? ReceiverSettings::pointsOf(*modulation)
                      : std::vector<std::complex<double>>();
}

/// Whether the next notification has two finite samples that differ.
bool SignalFeed::hasSignal() const
{
    const double* first = nullptr;
    for (const double& sample : m_samples) {
        if (std::isfinite(sample) && first && sample != *first)
            return true;
        if (std::isfinite(sample))
            first = &sample;
    }
    return false;
}

void SignalFeed::setSpeed(double speed)
{
    m_speed = speed == fastest ? fastest : std::clamp(speed, minSpeed, maxSpeed);
    chooseSegmentLength();
}

void SignalFeed::setChannel(const ChannelChoice& channel)
{
    if (m_input && channel.last() >= m_input->valueCount())
        return;
    m_channel = channel;
    m_eye.restart();
    if (m_received && !m_input->isComplex())
        rebuild();
    else if (m_ahead)
        openReader(position());
}

void SignalFeed::setLevels(double lowest, double highest)
{
    m_values.setY(lowest, highest);
    m_eye.setLevels(lowest, highest);
    m_iq.setLevel(std::max(std::abs(lowest), std::abs(highest)));
}

void SignalFeed::setSpan(double seconds)
{
    m_span = std::clamp(seconds, m_scale.minSpan, m_scale.maxSpan);
    m_values.setX(-m_scale.span(m_span), 0.0);
    chooseSegmentLength();
}

double SignalFeed::segmentLength() const
{
    const auto frameLength = m_ahead ? m_ahead->frameLength() : std::nullopt;
    return frameLength ? *frameLength : m_segmentLength;
}

// A view shows whole segments: one a period scrolls smoothly; longer ones where the time shown
// would take too many of them.
void SignalFeed::chooseSegmentLength()
{
    const double perSpan = m_span * m_scale.sampleRate;
    m_segmentLength = std::ceil(std::max(samplesPerPeriod(), perSpan / TimeScale::maxSegmentCount));
    const double many = std::max(samplesPerPeriod() / manyOfPeriod, perSpan / manyOfSpan);
    m_thinning.setFactor(static_cast<std::size_t>(
        std::max(std::floor(std::min(std::ceil(many), perSpan / fewOfSpan)), 1.0)));
    m_values.setBaudrate(m_scale.samplesPerUnit / static_cast<double>(m_thinning.factor()));
    if (!m_reader)
        return;
    m_reader->setSegmentLength(static_cast<std::size_t>(m_segmentLength));
    const double block = std::clamp(samplesPerPeriod() / blocksPerPeriod, 1.0, maxBlock);
    const double queue =
        isLive() ? std::clamp(liveSeconds * m_scale.sampleRate, 4.0 * block, maxLive)
                 : static_cast<double>(maxCatchUp) * samplesPerPeriod() + 1.2 * m_segmentLength;
    m_ahead->setLengths(static_cast<std::size_t>(block), static_cast<std::size_t>(queue));
}
