// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "PeerComparison.h"

#include "Measurement.h"

#include <algorithm>

namespace {

constexpr double floorDb = 47.5; // of the truth of a clean signal, as elsewhere
constexpr Peer::Loops wide = {0.02, 0.02};
constexpr double timingLoops[] = {0.001, 0.003, 0.01, 0.03};
constexpr double carrierLoops[] = {0.001, 0.003, 0.01};
constexpr double unknown = std::numeric_limits<double>::infinity();

struct Figure
{
    const char* name;
    double PeerFigures::*value;
};
constexpr Figure figures[] = {{"MER, dB", &PeerFigures::mer},
                              {"carrier, 1e-6 of the symbol rate", &PeerFigures::carrier},
                              {"clock, ppm", &PeerFigures::clock}};

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

/// What a peer finds in one trial with each pair of loops.
std::vector<PeerFigures> tryLoops(Peer& peer, const Signal& signal, const LinearSignal& kind)
{
    const double perSymbol = kind.samplesPerSymbol;
    const auto length = static_cast<double>(signal.size());
    const double told = std::round(kind.carrier * 100.0) / 100.0 / perSymbol;
    const auto first = between(peer.receive(signal, kind, told, wide), 0.5 * length, length);
    const double carrier = first.size() > 2 ? carrierOf(first) : told;
    Signal twice = signal;
    twice.insert(twice.end(), signal.begin(), signal.end());
    std::vector<PeerFigures> found;
    for (const double timing : timingLoops) {
        for (const double loop : carrierLoops) {
            const auto symbols = between(peer.receive(twice, kind, carrier, {timing, loop}),
                                         1.25 * length, 2.0 * length);
            if (symbols.size() < 10) {
                found.push_back({unknown, unknown, unknown});
                continue;
            }
            const double rate =
                1.0 / slopeOf(
                          symbols, [](std::size_t k) { return static_cast<double>(k); },
                          [&](std::size_t k) { return symbols[k].position; });
            found.push_back({merOf(symbols, kind.modulation), carrierOf(symbols) * perSymbol,
                             1e6 * (rate * perSymbol - 1.0)});
        }
    }
    return found;
}

/// Squares of errors; a clean signal's MER may be above its truth.
void addErrors(PeerFigures& sum, const PeerFigures& found, const PeerFigures& truth, bool isClean,
               std::size_t trials)
{
    for (const Figure& figure : figures) {
        double error = found.*figure.value - truth.*figure.value;
        if (isClean && figure.value == &PeerFigures::mer)
            error = std::min(error, 0.0);
        sum.*figure.value += error * error / static_cast<double>(trials);
    }
}

PeerFigures rootOf(PeerFigures sum)
{
    for (const Figure& figure : figures)
        sum.*figure.value = std::sqrt(sum.*figure.value);
    return sum;
}

PeerFigures errorsOf(Peer& peer, const std::vector<Signal>& trials, const LinearSignal& kind,
                     const PeerFigures& truth)
{
    std::vector<PeerFigures> sums(std::size(timingLoops) * std::size(carrierLoops));
    for (const Signal& signal : trials) {
        const std::vector<PeerFigures> found = tryLoops(peer, signal, kind);
        for (std::size_t k = 0; k < found.size(); ++k)
            addErrors(sums[k], found[k], truth, kind.errorPower() <= 0.0, trials.size());
    }
    PeerFigures best = {unknown, unknown, unknown};
    for (const PeerFigures& sum : sums) {
        for (const Figure& figure : figures)
            best.*figure.value = std::min(best.*figure.value, sum.*figure.value);
    }
    return rootOf(best);
}

QString cell(const PeerFigures& errors, const Figure& figure, double best)
{
    const double scale = figure.value == &PeerFigures::carrier ? 1e6 : 1.0;
    const double error = errors.*figure.value;
    const QString text = QString::number(scale * error, 'g', 3);
    return error <= best ? QStringLiteral("**%1**").arg(text) : text;
}

} // namespace

PeerRow comparePeers(const Case& one, const std::vector<Signal>& trials,
                     const std::vector<QJsonObject>& measured,
                     const std::vector<std::unique_ptr<Peer>>& peers)
{
    const LinearSignal& kind = *one.linear;
    PeerRow row;
    row.name = one.name;
    const bool isClean = kind.errorPower() <= 0.0;
    row.truth = {isClean ? floorDb : -10.0 * std::log10(kind.errorPower()), kind.carrier,
                 kind.clockPpm};
    for (const QJsonObject& object : measured) {
        const double symbolRate = figure(object, "symbol_rate.value").value_or(1.0);
        addErrors(row.ours,
                  {figure(object, "constellation.mer_db").value_or(unknown),
                   figure(object, "carrier.offset").value_or(unknown) / symbolRate,
                   figure(object, "clock.offset_ppm").value_or(unknown)},
                  row.truth, isClean, measured.size());
    }
    row.ours = rootOf(row.ours);
    for (const auto& peer : peers)
        row.peers.push_back(errorsOf(*peer, trials, kind, row.truth));
    return row;
}

QString peersAsMarkdown(const std::vector<PeerRow>& rows, const QStringList& names)
{
    QString text;
    for (const Figure& figure : figures) {
        const double scale = figure.value == &PeerFigures::carrier ? 1e6 : 1.0;
        text += QStringLiteral("\n| %1 | truth | %2 |\n|---|---")
                    .arg(QLatin1String(figure.name), names.join(" | ")) +
                QStringLiteral("|---").repeated(names.size()) + QLatin1String("|\n");
        for (const PeerRow& row : rows) {
            double best = row.ours.*figure.value;
            for (const PeerFigures& peer : row.peers)
                best = std::min(best, peer.*figure.value);
            text += QStringLiteral("| %1 | %2 | %3 |")
                        .arg(row.name)
                        .arg(scale * (row.truth.*figure.value), 0, 'g', 6)
                        .arg(cell(row.ours, figure, best));
            for (const PeerFigures& peer : row.peers)
                text += QStringLiteral(" %1 |").arg(cell(peer, figure, best));
            text += QLatin1Char('\n');
        }
    }
    return text;
}

QString behind(const PeerRow& row, const QStringList& names)
{
    QString text;
    for (const Figure& figure : figures) {
        for (std::size_t k = 0; k < row.peers.size(); ++k) {
            const double scale = figure.value == &PeerFigures::carrier ? 1e6 : 1.0;
            const double error = row.peers[k].*figure.value;
            if (error < row.ours.*figure.value)
                text += QStringLiteral("  behind: %1: %2 %3, %4 %5\n")
                            .arg(QLatin1String(figure.name), names[0])
                            .arg(scale * (row.ours.*figure.value), 0, 'g', 3)
                            .arg(names[static_cast<int>(k) + 1])
                            .arg(scale * error, 0, 'g', 3);
        }
    }
    return text;
}
