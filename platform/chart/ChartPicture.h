// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/CDataArrayD.h"

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

class QPainter;

/// A scale along one side of a cell, in logical pixels. The ends of the scale are the centres of
/// the first and the last pixel; a vertical scale starts at the bottom.
struct ChartAxis
{
    double start = 0.0;
    double stop = 0.0;
    int first = 0; ///< Left or upper edge of the cell.
    int length = 0;
    bool vertical = false;

    bool IsUsable() const;
    /// The pixel of a value. The axis must be usable.
    int Pixel(double value) const;
    /// Position of a value as a real number: Centre + Factor * value.
    double Factor() const;
    double Centre() const;

    bool operator==(const ChartAxis& other) const;
};

/// The drawn objects of a scene with all references resolved, back to front.
class ChartPicture
{
public:
    /// A rectangle with a gradient from one colour at the top to another.
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
        /// Whether the curve differs from an earlier one only by appended and dropped values, as
        /// many of X as of Y.
        bool IsContinuationOf(const Curve& earlier) const;
        bool operator==(const Curve& other) const;
    };
    using Item = std::variant<Fill, Text, Curve>;

    /// Finds the object of a name in a scene, or null.
    using Finder = std::function<OndoChartDisplay::CBaseObject*(const std::string& name)>;
    /// Replaces the picture by that of a scene's drawn objects.
    void Take(const Finder& find, const std::vector<const OndoChartDisplay::CBaseObject*>& drawn);
    const std::vector<Item>& Items() const { return m_items; }

private:
    std::vector<Item> m_items;
};
