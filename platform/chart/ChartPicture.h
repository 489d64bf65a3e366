// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/CDataArrayD.h"

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include <memory>
#include <variant>
#include <vector>

class QPainter;

namespace OndoChartDisplay {
class CChartDisplay;
}

/// A scale laid along one side of a cell, in logical pixels. The left or lower end of the scale is
/// the centre of the cell's first column or last row, the other end that of the opposite one.
struct ChartAxis
{
    double start = 0.0;
    double stop = 0.0;
    int first = 0; ///< Left or upper edge of the cell.
    int length = 0;
    bool vertical = false;

    bool IsUsable() const;
    /// The pixel of a value; only of a usable axis.
    int Pixel(double value) const;
    /// Centre + Factor * value is where the value lies, as a real number.
    double Factor() const;
    double Centre() const;

    bool operator==(const ChartAxis& other) const;
};

/// What a scene looks like: its drawn objects with all references resolved, back to front.
class ChartPicture
{
public:
    /// From one colour at the top to another.
    struct Fill
    {
        QRect rect;
        QRgb from;
        QRgb to;
        bool operator==(const Fill& other) const;
    };
    struct Text
    {
        QRect rect;
        QString text;
        QFont font;
        QRgb color;
        bool operator==(const Text& other) const;
    };
    struct Curve
    {
        ChartAxis x;
        ChartAxis y;
        QRect area; ///< Nothing is drawn outside.
        QRgb color;
        int lineWidth; ///< Logical pixels.
        std::shared_ptr<const OndoChartDisplay::CDataArrayD> xData;
        std::shared_ptr<const OndoChartDisplay::CDataArrayD> yData;
        OndoChartDisplay::CDataArrayD::State xState;
        OndoChartDisplay::CDataArrayD::State yState;
        /// Whether only values were appended and dropped, equally many of both, since another time.
        bool IsContinuationOf(const Curve& earlier) const;
        bool operator==(const Curve& other) const;
    };
    using Item = std::variant<Fill, Text, Curve>;

    /// Replaces the picture by that of a scene's drawn objects.
    void Take(const OndoChartDisplay::CChartDisplay& scene,
              const std::vector<const OndoChartDisplay::CBaseObject*>& drawn);
    const std::vector<Item>& Items() const { return m_items; }

private:
    std::vector<Item> m_items;
};
