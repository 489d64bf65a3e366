// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/Readings.h"

#include "workbench/player/Figures.h"
#include "workbench/player/Units.h"
#include "workbench/window/panes/ReadingTable.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

using Figure = Measurement::Figure;

constexpr std::size_t maxEyeCount = 3;
constexpr int eyeColumnCount = 7;
constexpr int levelDigits = 5;
constexpr int eyeDigits = 4; // it has not much room
constexpr double hundred = 100.0;

const QString blank = QStringLiteral(" ");
const QString decibels = QStringLiteral("dB");

QString percent(const Figure& ratio)
{
    return figures::fixed(ratio ? Figure(hundred * *ratio) : ratio, 1, QStringLiteral("%"));
}

QString levelText(const figures::Levels& levels, const Figure& level)
{
    return level ? levels.text(*level) : QString();
}

/// Why a figure is missing: the reason for it alone, or for its whole group.
QString reasonFor(const Measurement& measurement, QString path)
{
    while (!measurement.reasons.contains(path) && path.contains(QLatin1Char('.')))
        path.truncate(path.lastIndexOf(QLatin1Char('.')));
    return measurement.reasons.value(path);
}

QString counted(std::int64_t count) { return QLocale(QLocale::English).toString(count); }

} // namespace

Readings::Readings(ViewPanes& panes, QObject* parent)
    : QObject(parent)
    , m_level(new ReadingTable)
    , m_eye(new ReadingTable)
    , m_constellation(new ReadingTable)
{
    QMap<QString, QString> texts;
    for (const Section& section : meanings()) {
        for (const auto& [name, meaning] : section.figures)
            texts[name] = meaning;
    }
    for (ReadingTable* table : {m_level, m_eye, m_constellation})
        table->explain(texts);
    const QString longest = QStringLiteral("-888.8");
    const QString longer = QStringLiteral("-888.888 kHz");
    m_level->addLines({tr("Mean"), tr("Minimum"), tr("Maximum"), tr("Peak to peak"), tr("RMS"),
                       tr("RMS (AC)"), tr("Frequency")},
                      1, longer);
    m_eye->addLines({tr("Height"), tr("Opening"), tr("Width"), tr("Crossing"), tr("Jitter RMS"),
                     tr("Jitter p-p"), tr("Q")},
                    maxEyeCount, longest);
    const QString times[] = {QStringLiteral("-0.888 UI"), QStringLiteral("0.8888 UI")};
    for (const int column : {2, 3, 4, 5})
        m_eye->fitColumn(column, times[column / 4]);
    m_eye->fitColumn(6, QStringLiteral("888.8"));
    const QString ratio = QStringLiteral("-888.88 dB");
    m_constellation->addLines({tr("EVM RMS"), tr("EVM peak"), tr("MER"), tr("Carrier")}, 1, ratio);
    m_constellation->addLines({tr("Offset"), tr("Imbalance"), tr("Quadrature"), tr("Symbol rate")},
                              1, ratio);
    m_constellation->fitColumn(3, QStringLiteral("-88.8888 ± 0.0088 kHz"));
    std::size_t index = 0;
    for (ReadingTable* table : {m_level, m_eye, m_constellation})
        panes.setReadings(index++, table);
}

void Readings::setUnits(const QString& level, const TimeScale& time)
{
    m_levelUnit = level;
    m_symbolSeconds.reset();
    if (time.symbolRate && time.unit != TimeScale::Unit::Symbol)
        m_symbolSeconds = 1.0 / *time.symbolRate;
}

QString Readings::eyeTime(const Figure& symbols, int decimals) const
{
    if (!m_symbolSeconds || !symbols)
        return figures::fixed(symbols, decimals, QStringLiteral("UI"));
    return figures::duration(*symbols * *m_symbolSeconds);
}

void Readings::show(const Measurement& measurement)
{
    showLevel(measurement);
    showEye(measurement);
    showConstellation(measurement);
    showGate(measurement);
}

void Readings::showLevel(const Measurement& measurement)
{
    const Measurement::Time& time = measurement.time;
    const figures::Levels levels(
        std::max({std::abs(time.minimum.value_or(0.0)), std::abs(time.maximum.value_or(0.0)),
                  time.peakToPeak.value_or(0.0)}),
        levelDigits, m_levelUnit);
    std::size_t column = 0;
    for (const Figure& level :
         {time.mean, time.minimum, time.maximum, time.peakToPeak, time.rms, time.rmsAc})
        m_level->show(0, column++, levelText(levels, level));
    m_level->show(0, column, figures::frequency(time.frequency),
                  reasonFor(measurement, QStringLiteral("time.frequency")));
}

void Readings::showEye(const Measurement& measurement)
{
    const std::vector<Measurement::EyeOpening>& eyes = measurement.eye.eyes;
    const std::vector<Measurement::Level>& means = measurement.eye.levels;
    double largest = 0.0;
    for (const Measurement::Level& level : means)
        largest = std::max(largest, std::abs(level.mean));
    const int digits = m_levelUnit.isEmpty() ? eyeDigits : eyeDigits - 1;
    const figures::Levels levels(largest, digits, m_levelUnit);
    // Two levels have one eye: there is room for more of it.
    const bool isOne = eyes.size() == 1 && means.size() == 2;
    m_eye->setNames(1, isOne ? QStringList{tr("Inner", "height of the eye"), tr("One", "level"),
                                           tr("Zero", "level"), tr("Instant", "of the crossing"),
                                           tr("σ one", "noise of the level"),
                                           tr("σ zero", "noise of the level")}
                             : QStringList());
    const QString why =
        eyes.empty() ? reasonFor(measurement, QStringLiteral("eye.eyes")) : QString();
    m_eye->setNote(0, eyeColumnCount, why, why);
    const auto showLine = [this](std::size_t line, const QStringList& texts) {
        for (int column = 0; column < eyeColumnCount; ++column)
            m_eye->show(line, static_cast<std::size_t>(column), texts.value(column));
    };
    for (std::size_t line = 0; line < maxEyeCount; ++line) {
        if (line < eyes.size()) { // the uppermost first, as in the view
            const Measurement::EyeOpening& eye = eyes[eyes.size() - 1 - line];
            showLine(line, {levelText(levels, eye.height), percent(eye.opening),
                            eyeTime(eye.width, 3), percent(eye.crossing), eyeTime(eye.jitterRms, 4),
                            eyeTime(eye.jitterPeak, 4), figures::fixed(eye.q, 1)});
        } else if (line == 0) {
            showLine(0, QStringList());
        } else if (!isOne) {
            showLine(line, QVector<QString>(eyeColumnCount, blank).toList());
        }
    }
    if (!isOne)
        return;
    const Measurement::EyeOpening& eye = eyes.front();
    showLine(2, {levelText(levels, eye.innerHeight), levels.text(means[1].mean),
                 levels.text(means[0].mean), eyeTime(eye.crossingTime, 3),
                 levels.text(means[1].sigma), levels.text(means[0].sigma), blank});
}

void Readings::showConstellation(const Measurement& measurement)
{
    const Measurement::Constellation& points = measurement.constellation;
    const Measurement::Frequency& frequency = measurement.frequency;
    const auto why = [&measurement](const char* path) {
        return reasonFor(measurement, QLatin1String(path));
    };
    const auto show = [this](std::size_t line, std::size_t column, const QString& text,
                             const QString& why) {
        m_constellation->show(line, column, text, why);
    };
    // What was demodulated as FM has no constellation: there is room for what it has.
    const bool isFm = frequency.deviation.has_value();
    const QString note = points.evmRms || isFm ? QString() : why("constellation.evm_rms");
    m_constellation->setNote(0, 3, note, note);
    m_constellation->rename(0, isFm ? QStringList{tr("Deviation"), tr("Index"), tr("Centre")}
                                    : QStringList());
    show(0, 0, isFm ? figures::offset(frequency.deviation) : percent(points.evmRms), QString());
    show(0, 1, isFm ? figures::fixed(frequency.index, 3) : percent(points.evmPeak), QString());
    show(0, 2, isFm ? figures::offset(frequency.error) : figures::fixed(points.mer, 1, decibels),
         QString());
    show(0, 3,
         figures::measured(measurement.carrier.offset, measurement.carrier.deviation,
                           QStringLiteral("Hz")),
         why("carrier.offset"));
    show(1, 0, figures::fixed(points.offset, 1, decibels), why("constellation.offset_db"));
    show(1, 1, figures::fixed(points.imbalance, 2, decibels), why("constellation.imbalance_db"));
    show(1, 2, figures::fixed(points.quadrature, 2, QStringLiteral("°")),
         why("constellation.quadrature_deg"));
    show(1, 3,
         figures::measured(measurement.clock.offset, measurement.clock.deviation,
                           QStringLiteral("ppm")),
         why("clock.offset_ppm"));
}

void Readings::showGate(const Measurement& measurement)
{
    if (!(measurement.stop > measurement.start)) {
        for (ReadingTable* table : {m_level, m_eye, m_constellation})
            table->setGate(QString(), QString());
        return;
    }
    const QString stretch = figures::stretch(measurement.start, measurement.stop);
    const Measurement::LeftOut& left = measurement.leftOut;
    QString more;
    if (left.symbols > 0)
        more = tr("; left out: %1 symbols").arg(counted(left.symbols));
    const QString why = left.reason.isEmpty() ? QString() : tr("Left out: %1").arg(left.reason);
    m_level->setGate(stretch, why);
    m_eye->setGate(measurement.eye.traces > 0
                       ? tr("of %1 traces, %2").arg(counted(measurement.eye.traces), stretch)
                       : stretch,
                   why);
    m_constellation->setGate(
        measurement.constellation.symbols > 0
            ? tr("of %1 symbols, %2").arg(counted(measurement.constellation.symbols), stretch) +
                  more
            : stretch + more,
        why);
}
