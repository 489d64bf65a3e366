// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalBlock.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

#include <optional>
#include <vector>

/// All figures of a stretch of a signal, the gate. Base units: s, Hz, Bd, the signal's level before
/// any gain; ratios are plain numbers; times within a symbol are in symbol periods. A figure that
/// is not known is none, and reasons say why.
struct Measurement
{
    Q_DECLARE_TR_FUNCTIONS(Measurement)
public:
    class Maker; ///< block by block

    using Figure = std::optional<double>;
    enum class Origin { Given, Metadata, Estimated };

    /// Settings that measuring needs beside the blocks.
    struct Setup
    {
        SignalFormat format;
        double sampleRate = 1.0;          ///< Hz, of the input
        std::optional<double> symbolRate; ///< Bd, nominal
        Origin origin = Origin::Given;    ///< of the symbol rate
        Figure symbolRateDeviation;       ///< Bd, of an estimate
        Figure confidence;                ///< of an estimate
        std::optional<ReceiverSettings::Modulation> modulation;
        bool hasCarrierRecovery = false;
        bool isFm = false;
        double eyeBandwidth = 0.0; ///< symbol rates; 0: no low-pass
    };
    struct SymbolRate
    {
        Figure value, deviation, confidence;
        Origin origin = Origin::Given;
    };
    struct Time
    {
        Figure mean, minimum, maximum, peakToPeak, rms, rmsAc, frequency;
    };
    struct Level
    {
        double mean, sigma;
    };
    struct EyeOpening
    {
        Figure height, innerHeight, opening, width, crossing, crossingTime, jitterRms, jitterPeak,
            q;
    };
    struct Eye
    {
        std::int64_t traces = 0;
        Figure instant;               ///< of decision: symbols after the crossing before
        std::vector<Level> levels;    ///< from the lowest up
        std::vector<EyeOpening> eyes; ///< between them
    };
    struct Constellation
    {
        QString modulation; ///< empty: not known
        std::int64_t symbols = 0;
        Figure evmRms, evmPeak, mer, offset, imbalance, quadrature; ///< mer and so on dB, degrees
    };
    struct Carrier
    {
        Figure offset, deviation; ///< Hz
    };
    struct Clock
    {
        Figure offset, deviation; ///< parts per million of the nominal symbol rate
    };
    struct Frequency
    {
        Figure deviation, index, error; ///< Hz, plain number, Hz
    };
    struct Stage
    {
        QString name, state;
    };
    struct LeftOut
    {
        std::int64_t samples = 0, symbols = 0;
        QString reason; ///< empty: nothing was left out
    };

    /// Measures a gate.
    /// @param blocks  in order; may have gaps.
    /// @param from,to  s in the input; samples outside do not count.
    static Measurement of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                          const Setup& setup);
    /// JSON of the schema "orvane.measure/1", without `input`, which the caller adds.
    QJsonObject json() const;
    /// Says why a figure is none.
    /// @param path  of the figure in the schema.
    void miss(const char* path, const QString& reason)
    {
        reasons.insert(QString::fromLatin1(path), reason);
    }

    double start = 0.0, stop = 0.0; ///< s, of what was measured
    double sampleRate = 1.0;
    SymbolRate symbolRate;
    Time time;
    Eye eye;
    Constellation constellation;
    Carrier carrier;
    Clock clock;
    Frequency frequency;
    std::vector<Stage> stages;
    LeftOut leftOut;
    QStringList notes;
    QMap<QString, QString> reasons; ///< why a figure is none, by its path in the schema
};
