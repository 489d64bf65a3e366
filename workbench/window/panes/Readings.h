// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/TimeScale.h"
#include "workbench/measure/Measurement.h"

#include <QObject>

#include <utility>
#include <vector>

class ReadingTable;
class ViewPanes;

/// Read-outs below the views: the figures of the gate, which keep their places, and the gate
/// itself. The tool tip of a missing figure tells why.
class Readings : public QObject
{
    Q_OBJECT
public:
    /// @param panes  time, eye and IQ, in this order: they get the tables.
    Readings(ViewPanes& panes, QObject* parent);

    /// The meanings of the figures of a view, with their formulas, by the names that are shown.
    struct Section
    {
        QString title;
        std::vector<std::pair<QString, QString>> figures;
    };
    static std::vector<Section> meanings();

    /// @param level  unit of the samples; empty: none.
    /// @param time   the eye's times are in unit intervals where it counts symbols, else in
    ///               seconds.
    void setUnits(const QString& level, const TimeScale& time);
    void show(const Measurement& measurement);
    ReadingTable& level() { return *m_level; }
    ReadingTable& eye() { return *m_eye; }
    ReadingTable& constellation() { return *m_constellation; }

private:
    void showLevel(const Measurement& measurement);
    void showEye(const Measurement& measurement);
    void showConstellation(const Measurement& measurement);
    void showGate(const Measurement& measurement);

    QString eyeTime(const Measurement::Figure& symbols, int decimals) const;

    ReadingTable* m_level;
    ReadingTable* m_eye;
    ReadingTable* m_constellation;
    QString m_levelUnit;
    std::optional<double> m_symbolSeconds; // where times are in seconds
};
