// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

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

    void show(const Measurement& measurement);
    ReadingTable& level() { return *m_level; }
    ReadingTable& eye() { return *m_eye; }
    ReadingTable& constellation() { return *m_constellation; }

private:
    void showLevel(const Measurement& measurement);
    void showEye(const Measurement& measurement);
    void showConstellation(const Measurement& measurement);
    void showGate(const Measurement& measurement);

    ReadingTable* m_level;
    ReadingTable* m_eye;
    ReadingTable* m_constellation;
};
