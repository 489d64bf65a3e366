// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Compares what a program measures of signals (--measure json) with what their makers know of them.
#include "Case.h"
#include "Comparison.h"
#include "Measurement.h"
#include "PeerComparison.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

namespace {

struct Run
{
    QString program;
    QString folder;
    int trialCount = 5;
};

int fail(const QString& text)
{
    std::fprintf(stderr, "bench_truth: %s\n", qPrintable(text));
    return 2;
}

/// Other receivers beside the program. Says which one is missing.
int compareWithPeers(const std::vector<Case>& cases, const Run& run, QFile& markdown)
{
    PeerComparison comparison(run.program, run.folder, run.trialCount);
    const QStringList names = comparison.peerNames();
    if (names.size() < 2)
        std::printf("GNU Radio is missing\n");
    std::vector<PeerRow> rows;
    for (const Case& one : cases) {
        const std::vector<PeerRow> more = comparison.compare(one);
        if (more.empty())
            return fail(run.folder + ": cannot be written");
        rows.insert(rows.end(), more.begin(), more.end());
        std::printf("%s\n%s", qPrintable(one.name), qPrintable(farther(more, names)));
        std::fflush(stdout);
    }
    const QString tables = peersAsMarkdown(rows, names);
    std::printf("%s", qPrintable(tables));
    if (markdown.isOpen() && markdown.write(tables.toUtf8()) < 0)
        return fail(markdown.fileName() + ": cannot be written");
    return farther(rows, names).isEmpty() ? 0 : 1;
}

std::vector<Result> measure(const Case& one, const Run& run)
{
    const int trialCount = std::max(run.trialCount, one.leastTrials);
    QStringList files;
    for (int trial = 0; trial < trialCount; ++trial) {
        Random random(one.name.toStdString(), trial);
        std::vector<Signal> recordings = {one.make(random)};
        for (const auto& form : one.forms)
            recordings.push_back(form(recordings.front()));
        for (std::size_t k = 0; k < recordings.size(); ++k) {
            files += QStringLiteral("%1/%2-%3-%4.%5")
                         .arg(run.folder, one.name)
                         .arg(trial)
                         .arg(k)
                         .arg(QLatin1String(one.isComplex ? "cf32" : "rf32"));
            if (!write(recordings[k], one.isComplex, files.back()))
                return {};
        }
    }
    const Measurement measurement = Measurement::of(run.program, files, one.arguments);
    if (!measurement.error().isEmpty())
        std::fprintf(stderr, "%s: %s\n", qPrintable(one.name), qPrintable(measurement.error()));
    std::vector<std::vector<QJsonObject>> trials(static_cast<std::size_t>(trialCount));
    const std::size_t forms = one.forms.size() + 1;
    for (std::size_t k = 0; k < static_cast<std::size_t>(files.size()); ++k)
        trials[k / forms].push_back(measurement.object(files[static_cast<int>(k)]));
    std::vector<Result> results;
    for (const Truth& truth : one.truths)
        results.push_back(compare(truth, trials));
    return results;
}

void addOptions(QCommandLineParser& parser)
{
    parser.addOptions({{"program", "The workbench.", "path"},
                       {"filter", "Only cases whose names match.", "regex"},
                       {"repeat", "Trials of each case.", "n", "5"},
                       {"markdown", "Writes the tables.", "file"},
                       {"keep", "Keeps the signals.", "folder"},
                       {"peers", "Compares with other receivers, where they are installed."},
                       {"list", "Lists the cases and their command lines."}});
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    addOptions(parser);
    parser.process(application);
    const QTemporaryDir temporary;
    Run run = {parser.value("program"), temporary.path(), parser.value("repeat").toInt()};
    if (parser.isSet("keep"))
        run.folder = QDir(parser.value("keep")).absolutePath();
    if (!QDir().mkpath(run.folder))
        return fail(run.folder + ": cannot be made");
    if (!parser.isSet("list") && (run.program.isEmpty() || run.trialCount < 1))
        return fail("give --program, and --repeat from 1");

    QFile markdown(parser.value("markdown"));
    if (parser.isSet("markdown") && !markdown.open(QIODevice::WriteOnly))
        return fail(markdown.fileName() + ": cannot be written");
    const QRegularExpression filter(parser.value("filter"));
    if (parser.isSet("peers")) {
        std::vector<Case> cases;
        for (const Case& one : linearCases()) {
            if (one.linear && filter.match(one.name).hasMatch())
                cases.push_back(one);
        }
        return compareWithPeers(cases, run, markdown);
    }
    std::vector<Outcome> outcomes;
    int count = 0;
    int good = 0;
    for (const auto& cases : {linearCases(), eyeCases(), otherCases()}) {
        for (const Case& one : cases) {
            if (!filter.match(one.name).hasMatch())
                continue;
            const QString command = one.arguments.join(QLatin1Char(' '));
            if (parser.isSet("list")) {
                std::printf("%s: %s\n", qPrintable(one.name), qPrintable(command));
                continue;
            }
            outcomes.push_back({one.group, one.name, measure(one, run)});
            if (outcomes.back().results.empty())
                return fail(run.folder + ": cannot be written");
            for (const Result& result : outcomes.back().results) {
                ++count;
                good += result.isGood ? 1 : 0;
            }
            std::printf("%s", qPrintable(asText(one.name, outcomes.back().results)));
            std::fflush(stdout);
        }
    }
    std::printf("%d of %d figures of %d cases inside their goals\n", good, count,
                static_cast<int>(outcomes.size()));
    if (markdown.isOpen() && markdown.write(asMarkdown(outcomes).toUtf8()) < 0)
        return fail(markdown.fileName() + ": cannot be written");
    return good == count ? 0 : 1;
}
