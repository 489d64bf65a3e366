// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/Measurements.h"

#include <QObject>

class ReadingTable;
class ViewPanes;

/// Read-outs below the views: what the signal measures, in figures that keep their places.
class Readings : public QObject
{
    Q_OBJECT
public:
    /// @param panes  time, eye and IQ, in this order: they get the tables.
    Readings(ViewPanes& panes, QObject* parent);

    void show(const Measurements& measurements);
    ReadingTable& level() { return *m_level; }
    ReadingTable& eye() { return *m_eye; }
    ReadingTable& constellation() { return *m_constellation; }

private:
    void showLevel(const std::optional<LevelReadings>& readings);
    void showEye(const Measurements& measurements);
    void showConstellation(const Measurements& measurements);
    void sayWhatIsMissing(const Measurements& measurements);

    ReadingTable* m_level;
    ReadingTable* m_eye;
    ReadingTable* m_constellation;
};
