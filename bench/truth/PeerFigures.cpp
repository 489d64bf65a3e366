// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "PeerFigures.h"

#include "Bounds.h"

#include <algorithm>

namespace {

constexpr double edgeSymbols = 12.0; // at either end, whose pulses the record may cut off
// Bandwidths of loops.
constexpr double wide = 0.02;
constexpr double timingLoops[] = {0.001, 0.003, 0.01, 0.03};
constexpr double carrierLoops[] = {0.001, 0.003, 0.01};
constexpr double unknown = LinearSignal::none;
constexpr double PeerFigures::*const figures[] = {&PeerFigures::mer, &PeerFigures::carrier,
                                                  &PeerFigures::clock};

/// Slope of a line through points, least squares.
template<class X, class Y>
double slopeOf(const std::vector<Peer::Symbol>& symbols, X x, Y y)
{
    const auto count = static_cast<double>(symbols.size());
    double meanX = 0.0, meanY = 0.0, cross = 0.0, square = 0.0;
    for (std::size_t k = 0; k < symbols.size(); ++k) {
        meanX += x(k) / count;
        meanY += y(k) / count;
    }
    for (std::size_t k = 0; k < symbols.size(); ++k) {
        cross += (x(k) - meanX) * (y(k) - meanY);
        square += (x(k) - meanX) * (x(k) - meanX);
    }
    return cross / square;
}

double carrierOf(const std::vector<Peer::Symbol>& symbols) // cycles a sample
{
    return slopeOf(
               symbols, [&](std::size_t k) { return symbols[k].position; },
               [&](std::size_t k) { return symbols[k].phase; }) /
           (2.0 * pi);
}

/// The gain and noise under which the values are likeliest, each of the points being as likely as
/// another (expectation maximisation); from a gain on.
double merFrom(const std::vector<Peer::Symbol>& symbols, const std::vector<Complex>& points,
               Complex gain)
{
    constexpr int rounds = 15;
    const auto count = static_cast<double>(symbols.size());
    double noise = 0.0;
    for (const Peer::Symbol& symbol : symbols) {
        double least = unknown;
        for (const Complex& point : points)
            least = std::min(least, std::norm(symbol.value - gain * point));
        noise += least / count;
    }
    for (int round = 0; round < rounds; ++round) {
        Complex cross = 0.0;
        double square = 0.0, power = 0.0, error = 0.0;
        std::vector<double> chances(points.size());
        for (const Peer::Symbol& symbol : symbols) {
            double least = unknown, total = 0.0;
            for (const Complex& point : points)
                least = std::min(least, std::norm(symbol.value - gain * point));
            for (std::size_t p = 0; p < points.size(); ++p) {
                const double off = std::norm(symbol.value - gain * points[p]);
                chances[p] = std::exp((least - off) / std::max(noise, 1e-12));
                total += chances[p];
            }
            for (std::size_t p = 0; p < points.size(); ++p) {
                const double chance = chances[p] / total;
                cross += chance * symbol.value * std::conj(points[p]);
                square += chance * std::norm(points[p]);
                error += chance * std::norm(symbol.value - gain * points[p]) / count;
            }
            power += std::norm(symbol.value) / count;
        }
        gain = cross / square;
        noise = error;
    }
    return 10.0 * std::log10(std::norm(gain) / noise);
}

double merOf(const std::vector<Peer::Symbol>& symbols, LinearSignal::Modulation modulation)
{
    double power = 0.0;
    for (const Peer::Symbol& symbol : symbols)
        power += std::norm(symbol.value) / static_cast<double>(symbols.size());
    return merFrom(symbols, LinearSignal::pointsOf(modulation), std::sqrt(power));
}

std::vector<Peer::Symbol> between(const std::vector<Peer::Symbol>& symbols, double first,
                                  double last)
{
    std::vector<Peer::Symbol> result;
    for (const Peer::Symbol& symbol : symbols) {
        if (symbol.position >= first && symbol.position < last)
            result.push_back(symbol);
    }
    return result;
}

Signal mixedDown(Signal signal, double carrier)
{
    for (std::size_t n = 0; n < signal.size(); ++n)
        signal[n] *= std::polar(1.0, -2.0 * pi * std::fmod(carrier * static_cast<double>(n), 1.0));
    return signal;
}

/// A record after itself, shifted such that its last symbol is followed by the first one in time:
/// loops settle on the lead-in, learn no more from it than from the record, and pass on to the
/// record without a jump.
Signal afterLeadIn(const Signal& record, const LinearSignal& kind)
{
    constexpr int reach = 24; // samples of the interpolation on either side, a sinc under a cosine
    const double period = kind.samplesPerSymbol / (1.0 + kind.clockPpm * 1e-6);
    const auto size = static_cast<int>(record.size());
    const double shift = std::floor(size / period) * period;
    Signal joined;
    for (int n = -static_cast<int>(shift); n < 0; ++n) {
        const double place = n + shift;
        const int middle = static_cast<int>(place);
        Complex sum = 0.0;
        for (int k = std::max(0, middle - reach + 1); k <= std::min(size - 1, middle + reach);
             ++k) {
            const double x = place - k;
            const double weight = std::cos(0.5 * pi * x / reach);
            sum += record[static_cast<std::size_t>(k)] * weight * weight *
                   (std::abs(x) < 1e-9 ? 1.0 : std::sin(pi * x) / (pi * x));
        }
        joined.push_back(sum);
    }
    joined.insert(joined.end(), record.begin(), record.end());
    return joined;
}

/// What follows from a peer's symbols: the carrier of a line through the phases that were taken
/// off, the clock of one through the instants.
PeerFigures figuresOf(const std::vector<Peer::Symbol>& symbols, const LinearSignal& kind)
{
    constexpr std::size_t few = 10;
    if (symbols.size() < few)
        return {};
    const double rate = 1.0 / slopeOf(
                                  symbols, [](std::size_t k) { return static_cast<double>(k); },
                                  [&](std::size_t k) { return symbols[k].position; });
    return {merOf(symbols, kind.modulation), carrierOf(symbols) * kind.samplesPerSymbol,
            1e6 * (rate * kind.samplesPerSymbol - 1.0)};
}

} // namespace

PeerFigures errorsOf(const PeerFigures& found, const LinearSignal& sent)
{
    const double power = sent.errorPower();
    const double mer = power > 0.0 ? std::abs(found.mer + 10.0 * std::log10(power))
                                   : std::max(bounds::floorDb - found.mer, 0.0);
    return {std::isfinite(found.mer) ? mer : unknown, std::abs(found.carrier - sent.carrier),
            std::abs(found.clock - sent.clockPpm)};
}

double mostOf(const std::vector<std::vector<double>>& errorsOfReceivers, double bound)
{
    double least = unknown;
    for (std::vector<double> errors : errorsOfReceivers) {
        const auto middle = errors.begin() + static_cast<std::ptrdiff_t>(errors.size() / 2);
        std::nth_element(errors.begin(), middle, errors.end());
        least = std::min(least, *middle);
    }
    return 10.0 * std::max(least, bound);
}

double meanOf(const std::vector<double>& errors, double most)
{
    double sum = 0.0;
    for (const double error : errors)
        sum += std::min(error, most) / static_cast<double>(errors.size());
    return sum;
}

PeerFigures boundsOf(const LinearSignal& kind)
{
    const auto count = static_cast<double>(kind.symbolCount);
    const double esN0 = 1.0 / std::max(kind.errorPower(), std::pow(10.0, -bounds::floorDb / 10.0));
    const double part = bounds::phasePart(LinearSignal::pointsOf(kind.modulation), esN0);
    return {bounds::mer(count), bounds::carrier(count, esN0, part),
            bounds::clock(count, esN0, kind.rollOff)};
}

TunedPeer::TunedPeer(Peer& peer, double carrier, const std::vector<PeerTrial>& training)
    : m_peer(peer)
    , m_carrier(carrier)
{
    std::vector<Loops> pairs;
    for (const double timing : timingLoops) {
        for (const double loop : carrierLoops)
            pairs.push_back({timing, loop});
    }
    std::vector<std::vector<PeerFigures>> errors(pairs.size());
    for (const PeerTrial& trial : training) {
        const std::vector<PeerFigures> found = figuresOf(trial, pairs);
        for (std::size_t k = 0; k < pairs.size(); ++k)
            errors[k].push_back(errorsOf(found[k], trial.sent));
    }
    for (const auto figure : figures) {
        std::vector<std::vector<double>> ofPairs;
        for (const std::vector<PeerFigures>& ofPair : errors) {
            ofPairs.emplace_back();
            for (const PeerFigures& error : ofPair)
                ofPairs.back().push_back(error.*figure);
        }
        const double most = mostOf(ofPairs, boundsOf(training.front().sent).*figure);
        const auto best = std::min_element(ofPairs.begin(), ofPairs.end(),
                                           [&](const auto& one, const auto& other) {
                                               return meanOf(one, most) < meanOf(other, most);
                                           });
        m_loops.push_back(pairs[static_cast<std::size_t>(best - ofPairs.begin())]);
    }
}

PeerFigures TunedPeer::measure(const PeerTrial& trial) const
{
    const std::vector<PeerFigures> found = figuresOf(trial, m_loops);
    return {found[0].mer, found[1].carrier, found[2].clock};
}

/// The loops run over the record at wide bandwidths to find what is left of the carrier, then at
/// those wanted over a lead-in and the record. Symbols near its ends are not measured.
std::vector<PeerFigures> TunedPeer::figuresOf(const PeerTrial& trial,
                                              const std::vector<Loops>& loops) const
{
    const LinearSignal& kind = trial.sent;
    const auto length = static_cast<double>(trial.signal.size());
    const double told = m_carrier / kind.samplesPerSymbol;
    const auto first = between(m_peer.receive(trial.signal, kind, told, wide, {wide}).front(),
                               0.5 * length, length);
    const double carrier = first.size() > 2 ? carrierOf(first) : told;
    const Signal record = mixedDown(trial.signal, carrier);
    const Signal joined = afterLeadIn(record, kind);
    const double begin = static_cast<double>(joined.size() - record.size());
    const double edge = edgeSymbols * kind.samplesPerSymbol;
    std::vector<PeerFigures> found(loops.size());
    for (const double timing : timingLoops) {
        std::vector<std::size_t> indices; // of the pairs with this loop
        std::vector<double> bandwidths;
        for (std::size_t k = 0; k < loops.size(); ++k) {
            if (loops[k].timing != timing)
                continue;
            indices.push_back(k);
            bandwidths.push_back(loops[k].carrier);
        }
        if (indices.empty())
            continue;
        const auto received = m_peer.receive(joined, kind, 0.0, timing, bandwidths);
        for (std::size_t k = 0; k < indices.size(); ++k) {
            PeerFigures& figures = found[indices[k]];
            figures = ::figuresOf(
                between(received[k], begin + edge, static_cast<double>(joined.size()) - edge),
                kind);
            figures.carrier += carrier * kind.samplesPerSymbol;
        }
    }
    return found;
}
