// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverSettings.h"

#include "workbench/receiver/LiquidHandle.h"

#include <cmath>
#include <tuple>

#include <liquid/liquid.h>

namespace {

struct Kind
{
    const char* name;
    modulation_scheme scheme;
};
constexpr Kind kinds[] = {{"BPSK", LIQUID_MODEM_BPSK},
                          {"QPSK", LIQUID_MODEM_QPSK},
                          {"8PSK", LIQUID_MODEM_PSK8},
                          {"16QAM", LIQUID_MODEM_QAM16},
                          {"64QAM", LIQUID_MODEM_QAM64}};

} // namespace

QStringList ReceiverSettings::modulationNames()
{
    QStringList names;
    for (const Kind& kind : kinds)
        names += QString::fromLatin1(kind.name);
    return names;
}

std::optional<ReceiverSettings::Modulation> ReceiverSettings::modulationOf(const QString& name)
{
    const int index = modulationNames().indexOf(name.toUpper());
    return index < 0 ? std::nullopt : std::optional(static_cast<Modulation>(index));
}

std::vector<std::complex<double>> ReceiverSettings::pointsOf(Modulation modulation)
{
    const LiquidHandle<modemcf> modem(modemcf_create(kinds[static_cast<int>(modulation)].scheme),
                                      modemcf_destroy);
    std::vector<std::complex<double>> points(std::size_t{1} << modemcf_get_bps(modem.get()));
    for (std::size_t k = 0; k < points.size(); ++k) {
        std::complex<float> point;
        modemcf_modulate(modem.get(), static_cast<unsigned>(k), &point);
        points[k] = point;
    }
    return points;
}

QString ReceiverSettings::flaw(double sampleRate) const
{
    if (!isOn)
        return QString();
    if (!(std::abs(shift) <= sampleRate))
        return tr("a shift of %1 Hz is more than the sample rate; give a smaller one").arg(shift);
    if (bandwidth && !(*bandwidth > 0.0 && *bandwidth < sampleRate))
        return tr("a channel of %1 Hz is not within the sample rate; give another bandwidth")
            .arg(*bandwidth);
    if (squelch && !(*squelch >= minSquelch && *squelch <= maxSquelch))
        return tr("a squelch of %1 dB cannot be had; give %2 to %3")
            .arg(*squelch)
            .arg(minSquelch)
            .arg(maxSquelch);
    if (rollOff && !(*rollOff > 0.0 && *rollOff <= maxRollOff))
        return tr("a roll-off of %1 cannot be had; give more than 0, up to %2")
            .arg(*rollOff)
            .arg(maxRollOff);
    if (symbolRate && !(sampleRate / *symbolRate >= minSamplesPerSymbol &&
                        sampleRate / *symbolRate <= maxSamplesPerSymbol))
        return tr("a receiver takes %1 to %2 samples of a symbol, which a symbol rate of %3 Bd "
                  "does not give; give another one")
            .arg(minSamplesPerSymbol)
            .arg(maxSamplesPerSymbol)
            .arg(*symbolRate);
    return QString();
}

bool ReceiverSettings::operator==(const ReceiverSettings& other) const
{
    const auto all = [](const ReceiverSettings& s) {
        return std::tie(s.isOn, s.shift, s.bandwidth, s.squelch, s.demodulation, s.symbolRate,
                        s.hasGainControl, s.rollOff, s.hasTimingRecovery, s.modulation);
    };
    return all(*this) == all(other);
}
