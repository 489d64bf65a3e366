// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/TimeScale.h"
#include "workbench/measure/Measurement.h"

#include <QObject>

#include <utility>
#include <vector>

class ReadingTable;
class ViewPanes;

/// Read-outs below the views: what the gate measures, in figures that keep their places, and what
/// gate that is. A figure that is missing says why to those who point at it.
class Readings : public QObject
{
    Q_OBJECT
public:
    /// @param panes  time, eye and IQ, in this order: they get the tables.
    Readings(ViewPanes& panes, QObject* parent);

    /// What the figures of a view mean, with their formulas: names as they are shown.
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
