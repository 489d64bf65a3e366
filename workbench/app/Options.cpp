// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/Options.h"

#include "workbench/app/OptionTexts.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/receiver/CharacterClock.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxChannel = ChannelChoice::maxChannel;
constexpr double maxSeconds = 3600.0;
constexpr double shortest = 1e-9; // seconds
constexpr double minHertz = 0.001;
constexpr int maxSide = 16384;
const QString levelsName = QStringLiteral("NRZ");

constexpr const char* receiverOptions[] = {"shift",    "bandwidth",  "squelch", "demod",
                                           "roll-off", "modulation", "no-agc",  "no-timing",
                                           "filter",   "remove-dc"};

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Options)
};

/// Reads option values; remembers the first that is wrong.
class Reader
{
public:
    explicit Reader(const QCommandLineParser& parser)
        : m_parser(parser)
    {}

    bool isSet(const char* name) const { return m_parser.isSet(QString::fromLatin1(name)); }
    QString text(const char* name) const { return m_parser.value(QString::fromLatin1(name)); }
    /// Why the first wrong value cannot be used.
    const Result<void>& verdict() const { return m_verdict; }

    std::optional<double> number(const char* name, double lowest, double highest)
    {
        if (!isSet(name))
            return std::nullopt;
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        if (isNumber && value >= lowest && value <= highest) // NaN is neither
            return value;
        reject(name, Text::tr("give a number from %1 to %2").arg(lowest).arg(highest));
        return std::nullopt;
    }
    std::optional<int> wholeNumber(const char* name, int lowest, int highest)
    {
        if (!isSet(name))
            return std::nullopt;
        bool isNumber = false;
        const int value = text(name).toInt(&isNumber);
        if (isNumber && value >= lowest && value <= highest)
            return value;
        reject(name, Text::tr("give a whole number from %1 to %2").arg(lowest).arg(highest));
        return std::nullopt;
    }
    std::optional<QRegularExpressionMatch> match(const char* name, const char* pattern,
                                                 const QString& advice)
    {
        if (!isSet(name))
            return std::nullopt;
        const QRegularExpression expression(
            QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)));
        const QRegularExpressionMatch match = expression.match(text(name));
        if (match.hasMatch())
            return match;
        reject(name, advice);
        return std::nullopt;
    }
    void reject(const char* name, const QString& advice)
    {
        if (m_verdict)
            m_verdict = failure(Text::tr("--%1: \"%2\" cannot be used; %3")
                                    .arg(QString::fromLatin1(name), text(name), advice));
    }

private:
    const QCommandLineParser& m_parser;
    Result<void> m_verdict;
};

void readRecording(Reader& reader, Options& options)
{
    options.recording.sampleRate = reader.number("sample-rate", minHertz, Recording::maxSampleRate);
    if (reader.isSet("format")) {
        options.recording.format = SampleFormat::parse(reader.text("format"));
        if (!options.recording.format)
            reader.reject("format", Text::tr("give c or r; f, s or u; 8, 16, 32 or 64, such as "
                                             "cf32 or cu8"));
    }
    options.recording.columns = reader.text("columns").split(QLatin1Char(','), Qt::SkipEmptyParts);
    const int columnCount = int(options.recording.columns.size());
    if (reader.isSet("columns") && (columnCount == 0 || columnCount > maxChannel))
        reader.reject("columns",
                      Text::tr("give 1 to %1 numbers or names between commas").arg(maxChannel));
    options.isInfo = reader.isSet("info");
    options.isMeasure = reader.match("measure", "json", Text::tr("give json")).has_value();
    options.maskFile = reader.text("mask");
    if (reader.isSet("mask") && options.maskFile.isEmpty())
        reader.reject("mask", Text::tr("give a name"));
    options.isDensity = reader.isSet("density");
    options.start = reader.number("start", 0.0, maxSeconds);
    options.hasSeconds = reader.isSet("seconds");
    if (reader.isSet("channel")) {
        const auto channel = ChannelChoice::parse(reader.text("channel"));
        options.channel = channel.value_or(options.channel);
        if (!channel)
            reader.reject("channel", Text::tr("give a number from 1 to %1, or two such as 1-2")
                                         .arg(ChannelChoice::maxChannel));
    }
}

void readViews(Reader& reader, Options& options)
{
    options.isTrajectory = reader.isSet("trajectory");
    options.eyeSymbolCount = reader.wholeNumber("eye-symbols", 1, EyeCut::maxSymbolCount);
    options.eyeBandwidth =
        reader.number("eye-bandwidth", EyeCut::minBandwidth, EyeCut::maxBandwidth);
    options.spanSeconds = reader.number("span", shortest, maxSeconds);
    if (reader.text("speed") == QLatin1String("max"))
        options.speed = Transport::fastest;
    else
        options.speed = reader.number("speed", Transport::minSpeed, Transport::maxSpeed);
    if (const auto scheme =
            reader.match("scheme", "desktop|dark|light", Text::tr("give desktop, dark or light")))
        options.scheme =
            static_cast<SchemeChoice::Choice>(SchemeChoice::names().indexOf(scheme->captured()));
    options.isReset = reader.isSet("reset");
    reader.match("language", Options::languagePattern, Text::tr("give a code such as de or de_AT"));
    if (const auto size = reader.match("size", "(\\d{1,6})x(\\d{1,6})",
                                       Text::tr("give width and height, such as 1280x800"))) {
        options.size = QSize(size->captured(1).toInt(), size->captured(2).toInt());
        const QSize smallest(Options::minWidth, Options::minHeight);
        if (options.size->expandedTo(smallest).boundedTo({maxSide, maxSide}) != options.size)
            reader.reject("size", Text::tr("give %1x%2 to %3x%3")
                                      .arg(smallest.width())
                                      .arg(smallest.height())
                                      .arg(maxSide));
    }
}

void readSnapshot(Reader& reader, Options& options)
{
    options.seconds = reader.number("seconds", shortest, maxSeconds).value_or(options.seconds);
    for (const char* name : {"snapshot", "settings"}) {
        if (reader.isSet(name) && reader.text(name).isEmpty())
            reader.reject(name, Text::tr("give a name"));
    }
    options.snapshotFolder = reader.text("snapshot");
    options.scale = reader.number("scale", ViewExport::minScale, ViewExport::maxScale);
    if (reader.isSet("formats"))
        options.formats.clear();
    for (const QString& name : reader.text("formats").split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (const auto format = ViewExport::formatOf(QLatin1Char('.') + name))
            options.formats.push_back(*format);
        else
            options.formats.clear();
    }
    if (options.formats.empty())
        reader.reject("formats", Text::tr("give some of png,svg,pdf,csv,npy"));
    for (const char* name : {"formats", "scale"}) {
        if (reader.isSet(name) && options.snapshotFolder.isEmpty())
            reader.reject(name, Text::tr("give --snapshot, too"));
    }
    options.settingsFile = reader.text("settings");
}

void readSymbolRate(Reader& reader, Options& options)
{
    options.isSymbolRateAuto = reader.text("symbol-rate") == QLatin1String("auto");
    if (!options.isSymbolRateAuto)
        options.symbolRate = reader.number("symbol-rate", minHertz, Recording::maxSampleRate);
}

/// Reads how a recording is received before it is shown.
ReceiverSettings readReceiver(Reader& reader, const Options& options)
{
    constexpr double usualRollOff = 0.35;
    ReceiverSettings settings;
    for (const char* name : receiverOptions)
        settings.isOn = settings.isOn || reader.isSet(name);
    settings.symbolRate = options.symbolRate;
    settings.shift =
        reader.number("shift", -Recording::maxSampleRate, Recording::maxSampleRate).value_or(0.0);
    settings.bandwidth = reader.number("bandwidth", minHertz, Recording::maxSampleRate);
    settings.hasAutoSquelch = reader.text("squelch") == QLatin1String("auto");
    if (!settings.hasAutoSquelch)
        settings.squelch =
            reader.number("squelch", ReceiverSettings::minSquelch, ReceiverSettings::maxSquelch);
    if (const auto name = reader.match("demod", "fm|am", Text::tr("give fm or am")))
        settings.demodulation = name->captured() == QLatin1String("fm")
                                    ? ReceiverSettings::Demodulation::Fm
                                    : ReceiverSettings::Demodulation::Am;
    if (reader.isSet("modulation")) {
        settings.modulation = modulationKinds::named(reader.text("modulation"));
        settings.rollOff = usualRollOff;
        if (!settings.modulation)
            reader.reject("modulation",
                          Text::tr("give one of %1").arg(modulationKinds::names().join(", ")));
        else if (reader.isSet("demod"))
            reader.reject("modulation", Text::tr("leave it or --demod out"));
    }
    if (const auto rollOff = reader.number("roll-off", 0.0, ReceiverSettings::maxRollOff))
        settings.rollOff = *rollOff > 0.0 ? rollOff : std::nullopt;
    if (reader.isSet("filter")) {
        settings.filter = ReceiverSettings::filterOf(reader.text("filter"));
        if (!settings.filter)
            reader.reject("filter",
                          Text::tr("give one of %1")
                              .arg(ReceiverSettings::filterNames().join(QStringLiteral(", "))));
    }
    settings.removesDc = reader.isSet("remove-dc");
    settings.hasGainControl = !reader.isSet("no-agc");
    settings.hasTimingRecovery = !reader.isSet("no-timing");
    settings.characterBits =
        reader.wholeNumber("characters", CharacterClock::minBits, CharacterClock::maxBits);
    for (const char* name : receiverOptions) {
        if (settings.characterBits && reader.isSet(name))
            reader.reject("characters",
                          Text::tr("leave it or --%1 out").arg(QString::fromLatin1(name)));
    }
    return settings;
}

/// Reads the settings of the built-in signal of levels.
NrzSettings readSettings(Reader& reader)
{
    NrzSettings settings;
    settings.symbolRate =
        reader.number("symbol-rate", NrzSettings::minSymbolRate, NrzSettings::maxSymbolRate)
            .value_or(settings.symbolRate);
    if (const auto levels = reader.match("levels", "2|4", Text::tr("give 2 or 4")))
        settings.levelCount = levels->captured().toInt();
    if (const auto decibels =
            reader.number("noise", NrzSettings::minNoiseDb, NrzSettings::maxNoiseDb))
        settings.noise = std::pow(10.0, *decibels / 20.0);
    settings.jitter =
        reader.number("jitter", 0.0, NrzSettings::maxJitter).value_or(settings.jitter);
    return settings;
}

/// Whether the built-in signal of levels is wanted; by default it is one with a modulation, because
/// all views have something to show of it.
bool wantsLevels(const Reader& reader)
{
    if (reader.isSet("demo"))
        return reader.text("demo").toUpper() == levelsName;
    return reader.isSet("levels") || reader.isSet("noise") || reader.isSet("jitter");
}

/// Reads the settings of a built-in signal with a modulation.
ModulationSettings readModulation(Reader& reader)
{
    ModulationSettings settings;
    const QStringList names = modulationKinds::names(modulationKinds::builtInCount);
    const int index = int(names.indexOf(reader.text("demo").toUpper()));
    if (index >= 0)
        settings.modulation = static_cast<ModulationKind>(index);
    else if (reader.isSet("demo"))
        reader.reject("demo",
                      Text::tr("give one of %1").arg((names + QStringList(levelsName)).join(", ")));
    settings.snrDb =
        reader.number("snr", ModulationSettings::minSnrDb, ModulationSettings::maxSnrDb)
            .value_or(settings.snrDb);
    if (const auto rate =
            reader.number("symbol-rate", NrzSettings::minSymbolRate, NrzSettings::maxSymbolRate))
        settings.sampleRate = *rate * ModulationSource::samplesPerSymbol;
    return settings;
}

/// Checks that each option fits the kind of the signal.
Result<void> checkPlaces(const Reader& reader, const Options& options)
{
    const bool isRecording = !options.file.isEmpty();
    for (const char* name : {"channel", "format", "sample-rate", "columns", "info", "measure",
                             "start", "characters"}) {
        if (!isRecording && reader.isSet(name))
            return failure(
                Text::tr("--%1: only recordings have it; name one").arg(QString::fromLatin1(name)));
    }
    for (const char* name : receiverOptions) {
        if (!isRecording && reader.isSet(name))
            return failure(
                Text::tr("--%1: only recordings have it; name one").arg(QString::fromLatin1(name)));
    }
    for (const char* name : {"levels", "noise", "jitter"}) {
        if (options.demo && reader.isSet(name))
            return failure(
                Text::tr("--%1: a signal of --demo does not have it; leave out one of them")
                    .arg(QString::fromLatin1(name)));
    }
    if (!options.demo && !isRecording && reader.isSet("snr"))
        return failure(
            Text::tr("--snr: only a built-in signal with a modulation has it; give one by --demo"));
    for (const char* name : {"demo", "snr", "levels", "noise", "jitter"}) {
        if (isRecording && reader.isSet(name))
            return failure(
                Text::tr("--%1: only the built-in signal has it; leave out the recording")
                    .arg(QString::fromLatin1(name)));
    }
    return {};
}

} // namespace

QString Options::languageIn(const QStringList& arguments)
{
    QCommandLineParser parser;
    optionTexts::describe(parser);
    parser.parse(arguments);
    Reader reader(parser);
    const auto language = reader.match("language", languagePattern, QString());
    return language ? language->captured() : QString();
}

bool Options::lacksSymbolRate(std::optional<double> known) const
{
    return (receiver.modulation || receiver.characterBits) && !symbolRate && !isSymbolRateAuto &&
           !known;
}

Result<Options> Options::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    optionTexts::describe(parser);
    if (!parser.parse(arguments))
        return failure(tr("command line: %1 Try --help.").arg(parser.errorText()));
    Options options;
    if (parser.isSet(QStringLiteral("help"))) {
        options.answer = parser.helpText() + QLatin1Char('\n');
        return options;
    }
    options.isVerbose = parser.isSet(QStringLiteral("verbose"));
    options.isVersion = parser.isSet(QStringLiteral("version"));
    if (options.isVersion) {
        options.answer = QCoreApplication::applicationName() + QLatin1Char(' ') +
                         QCoreApplication::applicationVersion() + QLatin1Char('\n');
        return options;
    }

    Reader reader(parser);
    readRecording(reader, options);
    readViews(reader, options);
    readSnapshot(reader, options);
    if (!parser.positionalArguments().isEmpty())
        readSymbolRate(reader, options);
    else if (wantsLevels(reader))
        options.builtIn = readSettings(reader);
    else
        options.demo = readModulation(reader);
    options.receiver = readReceiver(reader, options);
    if (!reader.verdict())
        return tl::unexpected(reader.verdict().error());
    const QStringList files = parser.positionalArguments();
    options.files = files;
    if (files.size() > 1 && !options.isMeasure)
        return failure(tr("%1: only one file can be shown; name one").arg(files[1]));
    if (files.contains(QString()))
        return failure(tr("command line: the name of the file is empty; name a recording"));
    options.file = files.value(0);
    if (const auto placed = checkPlaces(reader, options); !placed)
        return tl::unexpected(placed.error());
    return options;
}
