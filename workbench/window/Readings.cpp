// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Readings.h"

#include "workbench/window/Figures.h"
#include "workbench/window/ReadingTable.h"
#include "workbench/window/ViewPanes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t maxEyeCount = 3;
constexpr int eyeColumnCount = 7;
constexpr int levelDigits = 5;
constexpr int eyeDigits = 4; // it has not much room

const QString blank = QStringLiteral(" ");
const QString percent = QStringLiteral("%");
const QString decibels = QStringLiteral("dB");

} // namespace

Readings::Readings(ViewPanes& panes, QObject* parent)
    : QObject(parent)
    , m_level(new ReadingTable)
    , m_eye(new ReadingTable)
    , m_constellation(new ReadingTable)
{
    const QString longest = QStringLiteral("-888.8");
    const QString longer = QStringLiteral("-888.888 kHz");
    m_level->addLines({tr("Mean"), tr("Minimum"), tr("Maximum"), tr("Peak to peak"), tr("RMS"),
                       tr("RMS (AC)"), tr("Frequency")},
                      1, longer);
    m_eye->addLines({tr("Height"), tr("Opening"), tr("Width"), tr("Crossing"), tr("Jitter RMS"),
                     tr("Jitter p-p"), tr("Q")},
                    maxEyeCount, longest);
    m_constellation->addLines({tr("EVM RMS"), tr("EVM peak"), tr("MER"), tr("Carrier")}, 1, longer);
    m_constellation->addLines({tr("Offset"), tr("Imbalance"), tr("Quadrature"), tr("Symbol rate")},
                              1, longer);
    std::size_t index = 0;
    for (ReadingTable* table : {m_level, m_eye, m_constellation})
        panes.setReadings(index++, table);
}

void Readings::show(const Measurements& measurements)
{
    showLevel(measurements.level);
    showEye(measurements);
    showConstellation(measurements);
}

void Readings::showLevel(const std::optional<LevelReadings>& readings)
{
    if (!readings) {
        for (std::size_t column = 0; column < 7; ++column)
            m_level->show(0, column, QString());
        return;
    }
    const figures::Levels levels(
        std::max({std::abs(readings->lowest), std::abs(readings->highest), readings->peakToPeak()}),
        levelDigits);
    std::size_t column = 0;
    for (const double level : {readings->mean, readings->lowest, readings->highest,
                               readings->peakToPeak(), readings->rms, readings->acRms})
        m_level->show(0, column++, levels.text(level));
    m_level->show(0, column, figures::frequency(readings->frequency));
}

void Readings::showEye(const Measurements& measurements)
{
    const std::vector<EyeReadings::Eye> eyes =
        measurements.eye ? measurements.eye->eyes : std::vector<EyeReadings::Eye>();
    double largest = 0.0;
    for (const EyeReadings::Eye& eye : eyes)
        largest = std::max({largest, std::abs(eye.lowLevel), std::abs(eye.highLevel)});
    const figures::Levels levels(largest, eyeDigits);
    // Two levels have one eye: there is room for more of it.
    const bool isOne = eyes.size() == 1;
    m_eye->setNames(1, isOne ? QStringList{tr("Inner", "height of the eye"), tr("One", "level"),
                                           tr("Zero", "level"), tr("Instant", "of the crossing"),
                                           tr("σ one", "noise of the level"),
                                           tr("σ zero", "noise of the level")}
                             : QStringList());
    const bool hasNoLevels = eyes.empty() && measurements.hasTraces;
    m_eye->setNote(0, eyeColumnCount, hasNoLevels ? tr("levels not told apart") : QString(),
                   hasNoLevels
                       ? tr("Eyes of two, three and four levels are measured. Is the symbol "
                            "rate right, and the noise not too high?")
                       : QString());
    const auto showLine = [this](std::size_t line, const QStringList& texts) {
        for (int column = 0; column < eyeColumnCount; ++column)
            m_eye->show(line, static_cast<std::size_t>(column), texts.value(column));
    };
    for (std::size_t line = 0; line < maxEyeCount; ++line) {
        if (line < eyes.size()) { // the uppermost first, as they are seen
            const EyeReadings::Eye& eye = eyes[eyes.size() - 1 - line];
            showLine(line, {levels.text(eye.height), figures::fixed(eye.opening, 1, percent),
                            figures::fixed(eye.width, 3), figures::fixed(eye.crossing, 1, percent),
                            figures::fixed(eye.jitterRms, 4), figures::fixed(eye.jitterPeak, 4),
                            figures::fixed(eye.q, 1)});
        } else if (line == 0) {
            showLine(0, QStringList());
        } else if (!isOne) {
            showLine(line, QVector<QString>(eyeColumnCount, blank).toList());
        }
    }
    if (!isOne)
        return;
    const EyeReadings::Eye& eye = eyes.front();
    showLine(2,
             {levels.text(eye.innerHeight), levels.text(eye.highLevel), levels.text(eye.lowLevel),
              figures::fixed(eye.crossingTime, 3, QStringLiteral("UI")), levels.text(eye.highSigma),
              levels.text(eye.lowSigma), blank});
}

void Readings::showConstellation(const Measurements& measurements)
{
    const auto& readings = measurements.constellation;
    const auto value = [&](double ConstellationReadings::*member) {
        return readings ? std::optional<double>((*readings).*member) : std::nullopt;
    };
    sayWhatIsMissing(measurements);
    const QString texts[2][4] = {
        {figures::fixed(value(&ConstellationReadings::evmRms), 1, percent),
         figures::fixed(value(&ConstellationReadings::evmPeak), 1, percent),
         figures::fixed(value(&ConstellationReadings::mer), 1, decibels),
         figures::offset(measurements.carrierOffset)},
        {figures::fixed(value(&ConstellationReadings::originOffset), 1, decibels),
         figures::fixed(readings ? readings->imbalance : std::nullopt, 2, decibels),
         figures::fixed(readings ? readings->quadratureError : std::nullopt, 2,
                        QStringLiteral("°")),
         figures::fixed(measurements.symbolRateError, 1, QStringLiteral("ppm"))}};
    for (std::size_t line = 0; line < 2; ++line) {
        for (std::size_t column = 0; column < 4; ++column)
            m_constellation->show(line, column, texts[line][column]);
    }
}

void Readings::sayWhatIsMissing(const Measurements& measurements)
{
    QString text;
    QString explanation;
    if (measurements.constellation) {
        // Nothing is.
    } else if (!measurements.hasSymbols) {
        text = tr("no symbols");
        explanation = tr("EVM and MER are measured at the instants of decision: give the receiver "
                         "the symbol rate, and leave the trajectory out.");
    } else if (!measurements.hasModulation) {
        text = tr("modulation unknown");
        explanation = tr("EVM and MER are measured against the points of the modulation: choose it "
                         "in the receiver, or give it by --modulation.");
    } else {
        text = tr("too few symbols yet");
    }
    m_constellation->setNote(0, 3, text, explanation);
}
