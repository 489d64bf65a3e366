// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/MeasureCommand.h"

#include "workbench/app/DensityCheck.h"
#include "workbench/measure/MeasurementMaker.h"
#include "workbench/pipeline/Settling.h"
#include "workbench/player/Hints.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/window/density/MaskChoice.h"

#include <QJsonDocument>

#include <cmath>
#include <cstdio>
#include <new>

namespace {

constexpr std::size_t blockLength = 65536; // samples read at a time

/// Receives a part of a source, block by block.
/// @return whether there was any.
template<class Take>
bool receive(SignalSource& source, Receiver& receiver, double from, double to, double margin,
             const Take& take)
{
    std::vector<SignalBlock> made;
    bool isAny = false;
    const auto pass = [&] {
        for (const SignalBlock& block : made) {
            const double end =
                block.time + static_cast<double>(block.count()) / receiver.format().sampleRate;
            if (end < from || block.time >= to)
                continue;
            take(block);
            isAny = true;
        }
        made.clear();
    };
    const double rate = source.facts().sampleRate;
    const double first = std::max(std::floor((from - margin) * rate), 0.0);
    const double last = std::ceil((to + margin) * rate);
    if (first > 0.0 && !source.seek(static_cast<std::int64_t>(first)))
        return false;
    std::vector<double> values;
    while (static_cast<double>(source.position()) < last) {
        const double left = last - static_cast<double>(source.position());
        const std::int64_t position = source.position();
        const auto wanted = static_cast<std::size_t>(std::min(left, double{blockLength}));
        if (source.read(values, wanted) == 0)
            break;
        receiver.process(position, values, made);
        pass();
    }
    receiver.finish(made);
    pass();
    return isAny;
}

} // namespace

int MeasureCommand::run(const std::function<void(const QString&)>& say) const
{
    constexpr int exitFailed = 1, exitMaskFailed = 3;
    std::optional<density::Mask> mask;
    if (!m_options.maskFile.isEmpty()) {
        const auto read = MaskChoice::read(m_options.maskFile);
        if (!read) {
            say(QStringLiteral("%1: %2").arg(m_options.maskFile, read.error().sentence));
            return exitFailed;
        }
        mask = *read;
    }
    bool areAll = true, havePassed = true;
    for (const QString& file : m_options.files) {
        Result<bool> measured;
        try {
            measured = measure(file, mask ? &*mask : nullptr, say);
        } catch (const std::bad_alloc&) {
            measured =
                failure(tr("there is not enough memory to measure it; give --start and --seconds"));
        }
        if (!measured)
            say(QStringLiteral("%1: %2").arg(LiveAddress::title(file),
                                             Hints::text(measured.error())));
        areAll = areAll && measured;
        havePassed = havePassed && measured.value_or(true);
    }
    return !areAll ? exitFailed : havePassed ? 0 : exitMaskFailed;
}

/// Takes the symbol rate that was given, that of the recording, or an estimate.
void MeasureCommand::findSymbolRate(SignalSource& source, Measurement::Setup& setup,
                                    QStringList& notes) const
{
    if (m_options.symbolRate)
        setup.symbolRate = m_options.symbolRate;
    else if (source.facts().symbolRate && !m_options.isSymbolRateAuto) {
        setup.symbolRate = source.facts().symbolRate;
        setup.origin = Measurement::Origin::Metadata;
    } else {
        const auto estimate =
            SymbolRateEstimate::ofSource(source, m_options.channel, m_options.receiver);
        using Verdict = SymbolRateEstimate::Verdict;
        setup.origin = Measurement::Origin::Estimated;
        if (estimate.isToBeTaken(m_options.isSymbolRateAuto)) {
            setup.symbolRate = estimate.symbolRate;
            setup.confidence = estimate.confidence;
        }
        if (estimate.verdict != Verdict::Sure)
            notes += Hints::text(estimate.message());
    }
}

/// Fills in the settings of measuring beside the symbol rate.
void MeasureCommand::describe(const SignalSource& source, const ReceiverSettings& settings,
                              const Receiver& receiver, Measurement::Setup& setup) const
{
    setup.format = receiver.format();
    setup.sampleRate = source.facts().sampleRate;
    setup.modulation = settings.modulation;
    setup.hasCarrierRecovery = settings.isOn && settings.modulation;
    setup.isFm = settings.isOn && settings.demodulation == ReceiverSettings::Demodulation::Fm;
    setup.eyeBandwidth = m_options.eyeBandwidth.value_or(0.0);
}

Result<MeasureCommand::Range> MeasureCommand::rangeOf(const SignalSource& source) const
{
    Range range;
    range.from = m_options.start.value_or(0.0);
    if (m_options.hasSeconds)
        range.to = range.from + m_options.seconds;
    const auto length = source.sampleCount();
    if (length && range.from >= static_cast<double>(*length) / source.facts().sampleRate)
        return failure(tr("it has ended before %1 s; start earlier").arg(range.from));
    return range;
}

Result<bool> MeasureCommand::measure(const QString& file, const density::Mask* mask,
                                     const std::function<void(const QString&)>& say) const
{
    if (LiveAddress::isLive(file))
        return failure(tr("a live signal has no end to be measured to; record it first"));
    const auto recording = RecordingOpener::open(file, m_options.recording);
    if (!recording)
        return tl::unexpected(recording.error());
    QStringList notes = Hints::texts(recording->notices);
    for (const QString& notice : notes)
        say(QStringLiteral("%1: %2").arg(LiveAddress::title(file), notice));
    SignalSource& source = *recording->source;
    if (m_options.channel.last() >= source.facts().valueCount())
        return failure(tr("there is no channel %1; the recording has %2")
                           .arg(m_options.channel.last() + 1)
                           .arg(source.facts().valueCount()));

    Measurement::Setup setup;
    findSymbolRate(source, setup, notes);
    ReceiverSettings settings = m_options.receiver;
    if (settings.characterBits && !setup.symbolRate)
        return failure(
            tr("characters cannot be found without the symbol rate; give it with --symbol-rate"));
    settings.symbolRate = setup.symbolRate;
    if (const auto checked = settings.check(source.facts().sampleRate); !checked)
        return tl::unexpected(checked.error());
    const auto range = rangeOf(source);
    if (!range)
        return tl::unexpected(range.error());

    Receiver receiver(source.facts(), m_options.channel, settings);
    describe(source, settings, receiver, setup);
    const double margin = setup.symbolRate ? settlingSymbols / *setup.symbolRate : 0.0;
    Measurement::Maker maker(range->from, range->to, setup);
    std::optional<DensityCheck> check;
    if (mask || m_options.isDensity)
        check.emplace(mask ? std::optional(*mask) : std::nullopt, setup.format, range->from,
                      range->to, setup.eyeBandwidth);
    const bool isAny =
        receive(source, receiver, range->from, range->to, margin, [&](const SignalBlock& block) {
            maker.add(block);
            if (check)
                check->add(block);
        });
    if (source.hasFailed())
        return tl::unexpected(*source.trouble());
    if (!isAny)
        return failure(tr("there are no samples to be measured; give another range"));
    Measurement measurement = maker.finish();
    measurement.notes = notes + measurement.notes;
    if (check)
        check->finish();
    print(file, measurement, check ? &*check : nullptr, mask != nullptr);
    return !check || check->hasPassed();
}

void MeasureCommand::print(const QString& file, const Measurement& measurement,
                           const DensityCheck* check, bool hasMask) const
{
    QJsonObject json = measurement.json();
    json.insert(QStringLiteral("input"), file);
    if (hasMask)
        json.insert(QStringLiteral("mask"), check->mask());
    if (m_options.isDensity)
        json.insert(QStringLiteral("density"), check->figures());
    std::printf("%s\n", QJsonDocument(json).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}
