// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "PeerComparison.h"

#include "Measurement.h"
#include "PeerFigures.h"

#include <algorithm>
#include <utility>

namespace {

using Verdict = PairedErrors::Verdict;

constexpr int trainingCount = 6;
constexpr double carrierStep = 0.01; // to which peers are told the carrier, symbol rates
constexpr double clockRange = 100.0; // ppm either way
constexpr double marginPart = 0.1;   // of the bound
constexpr double deviations = 2.0;

struct Figure
{
    const char* name;
    double PeerFigures::*value;
    double scale;
};
constexpr Figure figures[] = {{"MER, dB", &PeerFigures::mer, 1.0},
                              {"Carrier, 1e-6 of the symbol rate", &PeerFigures::carrier, 1e6},
                              {"Clock, ppm", &PeerFigures::clock, 1.0}};
constexpr int figureCount = 3;

double toldCarrier(const LinearSignal& kind)
{
    return std::round(kind.carrier / carrierStep) * carrierStep;
}

PeerTrial trialOf(const Case& one, int number)
{
    Random random(one.name.toStdString(), number);
    PeerTrial trial{*one.linear, {}};
    trial.sent.carrier = toldCarrier(trial.sent) + (random.part() - 0.5) * carrierStep;
    trial.sent.clockPpm += (2.0 * random.part() - 1.0) * clockRange;
    trial.signal = trial.sent.make(random);
    return trial;
}

PeerFigures figuresOf(const QJsonObject& object)
{
    const double symbolRate = figure(object, "symbol_rate.value").value_or(1.0);
    return {figure(object, "constellation.mer_db").value_or(LinearSignal::none),
            figure(object, "carrier.offset").value_or(LinearSignal::none) / symbolRate,
            figure(object, "clock.offset_ppm").value_or(LinearSignal::none)};
}

PairedErrors compareErrors(const std::vector<double>& ours, const std::vector<double>& peers,
                           double most, double margin)
{
    const auto count = static_cast<double>(ours.size());
    PairedErrors result;
    result.peer = meanOf(peers, most);
    result.isLimited = *std::max_element(peers.begin(), peers.end()) > most;
    result.difference = meanOf(ours, most) - result.peer;
    double squares = 0.0;
    for (std::size_t k = 0; k < ours.size(); ++k) {
        const double off = std::min(ours[k], most) - std::min(peers[k], most) - result.difference;
        squares += off * off;
    }
    result.standardError =
        count > 1.0 ? std::sqrt(squares / (count * (count - 1.0))) : LinearSignal::none;
    const double chance = deviations * result.standardError;
    if (result.difference + chance < 0.0)
        result.verdict = Verdict::Nearer;
    else if (result.difference + chance <= margin)
        result.verdict = Verdict::AsNear;
    else if (result.difference > margin && result.difference > chance)
        result.verdict = Verdict::Farther;
    return result;
}

/// @param errors  of ours, then of each peer, for each trial.
PeerRow rowOf(const Case& one, int index, const std::vector<std::vector<PeerFigures>>& errors)
{
    const Figure& figure = figures[index];
    std::vector<std::vector<double>> ofReceivers;
    for (const std::vector<PeerFigures>& ofReceiver : errors) {
        ofReceivers.emplace_back();
        for (const PeerFigures& error : ofReceiver)
            ofReceivers.back().push_back(error.*figure.value);
    }
    const double bound = boundsOf(*one.linear).*figure.value;
    const double most = mostOf(ofReceivers, bound);
    PeerRow row;
    row.name = one.name;
    row.figure = index;
    row.ours = meanOf(ofReceivers.front(), most);
    row.margin = marginPart * bound;
    for (std::size_t k = 1; k < ofReceivers.size(); ++k)
        row.peers.push_back(compareErrors(ofReceivers.front(), ofReceivers[k], most, row.margin));
    return row;
}

QString text(double value) { return QString::number(value, 'g', 3); }

QString cell(const PairedErrors& errors, double scale)
{
    static const char* const words[] = {"nearer", "as near", "undecided", "**farther**"};
    return QStringLiteral("%1%2 | %3 ± %4 | %5")
        .arg(QLatin1String(errors.isLimited ? "> " : ""), text(scale * errors.peer),
             text(scale * errors.difference), text(scale * errors.standardError),
             QLatin1String(words[static_cast<int>(errors.verdict)]));
}

/// How often each verdict is, of one peer.
QString counts(const std::vector<PeerRow>& rows, int index, std::size_t peer)
{
    int numbers[4] = {};
    for (const PeerRow& row : rows) {
        if (row.figure == index)
            ++numbers[static_cast<int>(row.peers[peer].verdict)];
    }
    return QStringLiteral("%1 | %2 | %3 | %4")
        .arg(numbers[0])
        .arg(numbers[1])
        .arg(numbers[2])
        .arg(numbers[3]);
}

} // namespace

PeerComparison::PeerComparison(const QString& program, const QString& folder, int trialCount)
    : m_program(program)
    , m_folder(folder)
    , m_trialCount(trialCount)
{
    m_peers.push_back(liquidPeer());
    if (auto gnuRadio = gnuRadioPeer())
        m_peers.push_back(std::move(gnuRadio));
}

QStringList PeerComparison::peerNames() const
{
    QStringList names;
    for (const auto& peer : m_peers)
        names += peer->name();
    return names;
}

std::vector<PeerRow> PeerComparison::compare(const Case& one)
{
    std::vector<PeerTrial> training;
    std::vector<PeerTrial> trials;
    QStringList files;
    for (int number = 0; number < trainingCount + m_trialCount; ++number) {
        if (number < trainingCount) {
            training.push_back(trialOf(one, number));
            continue;
        }
        trials.push_back(trialOf(one, number));
        files += QStringLiteral("%1/%2-%3.cf32").arg(m_folder, one.name).arg(number);
        if (!write(trials.back().signal, true, files.back()))
            return {};
    }
    const Measurement measurement = Measurement::of(m_program, files, one.arguments);
    std::vector<std::vector<PeerFigures>> errors(1);
    for (std::size_t k = 0; k < trials.size(); ++k)
        errors[0].push_back(
            errorsOf(::figuresOf(measurement.object(files[static_cast<int>(k)])), trials[k].sent));
    for (const auto& peer : m_peers) {
        const TunedPeer tuned(*peer, toldCarrier(*one.linear), training);
        std::vector<PeerFigures> own;
        own.reserve(trials.size());
        for (const PeerTrial& trial : trials)
            own.push_back(errorsOf(tuned.measure(trial), trial.sent));
        errors.push_back(std::move(own));
    }
    std::vector<PeerRow> rows;
    rows.reserve(figureCount);
    for (int index = 0; index < figureCount; ++index)
        rows.push_back(rowOf(one, index, errors));
    return rows;
}

QString peersAsMarkdown(const std::vector<PeerRow>& rows, const QStringList& peerNames)
{
    QString text = QString::fromUtf8(
        "# Beside other receivers\n\n"
        "By bench_truth --peers; [how, and what the words mean](measuring.md#beside-others). "
        "Errors "
        "are means of magnitudes; after > some were larger than counts. Differences are Orvane's "
        "errors less the other's, ± the standard error.\n\n"
        "| figure | beside | nearer | as near | undecided | farther |\n"
        "|---|---|---|---|---|---|\n");
    for (int index = 0; index < figureCount; ++index) {
        for (int peer = 0; peer < peerNames.size(); ++peer)
            text += QStringLiteral("| %1 | %2 | %3 |\n")
                        .arg(QLatin1String(figures[index].name), peerNames[peer],
                             counts(rows, index, static_cast<std::size_t>(peer)));
    }
    for (int index = 0; index < figureCount; ++index) {
        text +=
            QStringLiteral("\n| %1 | margin | Orvane |").arg(QLatin1String(figures[index].name));
        for (const QString& name : peerNames)
            text += QStringLiteral(" %1 | difference | Orvane is |").arg(name);
        text += QStringLiteral("\n|---|---|---%1|\n")
                    .arg(QStringLiteral("|---|---|---").repeated(peerNames.size()));
        for (const PeerRow& row : rows) {
            if (row.figure != index)
                continue;
            const double scale = figures[index].scale;
            text += QStringLiteral("| %1 | %2 | %3 |")
                        .arg(row.name, ::text(scale * row.margin), ::text(scale * row.ours));
            for (const PairedErrors& peer : row.peers)
                text += QStringLiteral(" %1 |").arg(cell(peer, scale));
            text += QLatin1Char('\n');
        }
    }
    return text;
}

QString farther(const std::vector<PeerRow>& rows, const QStringList& peerNames)
{
    QString text;
    for (const PeerRow& row : rows) {
        const Figure& figure = figures[row.figure];
        for (std::size_t k = 0; k < row.peers.size(); ++k) {
            if (row.peers[k].verdict == Verdict::Farther)
                text += QStringLiteral("  farther: %1: %2, %3 %4\n")
                            .arg(QLatin1String(figure.name), ::text(figure.scale * row.ours),
                                 peerNames[static_cast<int>(k)],
                                 ::text(figure.scale * row.peers[k].peer));
        }
    }
    return text;
}
