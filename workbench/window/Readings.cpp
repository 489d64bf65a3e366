// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Readings.h"

#include "workbench/window/ReadingTable.h"
#include "workbench/window/Units.h"
#include "workbench/window/ViewPanes.h"

#include <cmath>

namespace {

constexpr int maxEyeCount = 3;

/// With so many decimals, and a unit.
QString fixed(double value, int decimals, const QString& unit = QString())
{
    const QString number = QString::number(value, 'f', decimals);
    return unit.isEmpty() ? number : number + QChar(0x2009) + unit;
}

QString fixed(const std::optional<double>& value, int decimals, const QString& unit = QString())
{
    return value ? fixed(*value, decimals, unit) : QString();
}

/// A level of unknown size, with four digits.
QString levelText(double value)
{
    if (std::abs(value) >= 1e-3 && std::abs(value) < 1e4)
        return QString::number(value, 'f',
                               4 - static_cast<int>(std::abs(value) >= 10.0) -
                                   static_cast<int>(std::abs(value) >= 100.0) -
                                   static_cast<int>(std::abs(value) >= 1000.0));
    return value == 0.0 ? QStringLiteral("0.0000") : QString::number(value, 'e', 2);
}

const QString percent = QStringLiteral("%");
const QString decibels = QStringLiteral("dB");

} // namespace

Readings::Readings(ViewPanes& panes, QObject* parent)
    : QObject(parent)
    , m_level(new ReadingTable)
    , m_eye(new ReadingTable)
    , m_constellation(new ReadingTable)
{
    // Wide enough for all that usually comes; the eye has not much room.
    const QString longest = QStringLiteral("-0.0000");
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
    showEye(measurements.eye);
    showConstellation(measurements);
}

void Readings::showLevel(const std::optional<LevelReadings>& readings)
{
    const auto level = [&](double LevelReadings::*value) {
        return readings ? levelText((*readings).*value) : QString();
    };
    m_level->show(0, 0, level(&LevelReadings::mean));
    m_level->show(0, 1, level(&LevelReadings::lowest));
    m_level->show(0, 2, level(&LevelReadings::highest));
    m_level->show(0, 3, readings ? levelText(readings->peakToPeak()) : QString());
    m_level->show(0, 4, level(&LevelReadings::rms));
    m_level->show(0, 5, level(&LevelReadings::acRms));
    m_level->show(0, 6,
                  readings && readings->frequency ? units::rate(*readings->frequency, "Hz")
                                                  : QString());
}

void Readings::showEye(const std::optional<EyeReadings>& readings)
{
    const std::size_t count = readings ? readings->eyes.size() : 0;
    for (std::size_t line = 0; line < maxEyeCount; ++line) {
        QString texts[7];
        if (line < count) { // the uppermost first, as they are seen
            const EyeReadings::Eye& eye = readings->eyes[count - 1 - line];
            texts[0] = levelText(eye.height);
            texts[1] = fixed(eye.opening, 1, percent);
            texts[2] = fixed(eye.width, 3);
            texts[3] = fixed(eye.crossing, 1, percent);
            texts[4] = fixed(eye.jitterRms, 4);
            texts[5] = fixed(eye.jitterPeak, 4);
            texts[6] = fixed(eye.q, 1);
        }
        const bool isEmpty = line > 0 && line >= count; // two levels have one eye
        for (std::size_t column = 0; column < 7; ++column)
            m_eye->show(line, column, isEmpty ? QStringLiteral(" ") : texts[column]);
    }
}

void Readings::showConstellation(const Measurements& measurements)
{
    const auto& readings = measurements.constellation;
    const auto value = [&](double ConstellationReadings::*member) {
        return readings ? std::optional<double>((*readings).*member) : std::nullopt;
    };
    m_constellation->show(0, 0, fixed(value(&ConstellationReadings::evmRms), 1, percent));
    m_constellation->show(0, 1, fixed(value(&ConstellationReadings::evmPeak), 1, percent));
    m_constellation->show(0, 2, fixed(value(&ConstellationReadings::mer), 1, decibels));
    m_constellation->show(0, 3,
                          measurements.carrierOffset
                              ? units::rate(std::round(*measurements.carrierOffset), "Hz")
                              : QString());
    m_constellation->show(1, 0, fixed(value(&ConstellationReadings::originOffset), 1, decibels));
    m_constellation->show(1, 1, fixed(readings ? readings->imbalance : std::nullopt, 2, decibels));
    m_constellation->show(
        1, 2, fixed(readings ? readings->quadratureError : std::nullopt, 2, QStringLiteral("°")));
    m_constellation->show(1, 3, fixed(measurements.symbolRateError, 1, QStringLiteral("ppm")));
}
