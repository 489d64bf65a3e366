// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QRect>
#include <QRgb>

#include <cstdint>
#include <memory>
#include <string>

/// The objects of a chart scene: plain settings, public and unchecked. They refer to one another by
/// name; an object with a reference to a missing object, or to one of another class, is not drawn.
namespace OndoChartDisplay {

/// A colour of four bytes.
struct ORVANE_PLATFORM_API CColor
{
    std::uint8_t alpha = 255;
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    QRgb Rgba() const { return qRgba(red, green, blue, alpha); }
    bool operator==(const CColor& other) const { return Rgba() == other.Rgba(); }
};

enum QuantityUnit : int {
    quLineWidth = 0, ///< Logical pixels.
    quPoint = 1,     ///< Points, of a font.
};

/// A value with its unit.
class ORVANE_PLATFORM_API CQuantity
{
public:
    /// @param name  of the unit, for display; may be null, and is not kept.
    CQuantity(double value, QuantityUnit unit, const char* name);

    double Value() const { return m_value; }
    QuantityUnit Unit() const { return m_unit; }

private:
    double m_value;
    QuantityUnit m_unit;
};

/// An object of a chart scene, see CChartDisplay.
class ORVANE_PLATFORM_API CBaseObject : public std::enable_shared_from_this<CBaseObject>
{
public:
    CBaseObject() = default;
    CBaseObject(const CBaseObject&) = delete;
    CBaseObject& operator=(const CBaseObject&) = delete;
    virtual ~CBaseObject();
};

/// A layer that objects are drawn on, and the renderer that draws it.
struct ORVANE_PLATFORM_API CLayerDescription : CBaseObject
{
    static constexpr const char* CLASS = "CLayerDescription";
    int m_rendererId = 0; ///< A layer of another renderer is not drawn.
};

/// A rectangle of the widget that objects are placed in.
struct ORVANE_PLATFORM_API CLayoutCell : CBaseObject
{
    static constexpr const char* CLASS = "CLayoutCell";
    QRect m_geometry; ///< Logical pixels of the widget; may reach beyond it.
};

/// Colours, line and fill of what refers to it.
struct ORVANE_PLATFORM_API CStyleResource : CBaseObject
{
    static constexpr const char* CLASS = "CStyleResource";
    static constexpr int noLine = 0;       ///< Line style; any other code is a solid line.
    static constexpr int noFill = 0;       ///< Fill style; codes not named are a plain fill.
    static constexpr int plainFill = 1;    ///< In the first colour; of text: its ground.
    static constexpr int gradientFill = 7; ///< From the first colour at the top to the second.

    CColor m_firstColor; ///< Lines, text.
    CColor m_secondColor{0, 0, 0, 0};
    CQuantity m_lineWidth{1.0, quLineWidth, nullptr};
    int m_lineStyle = 1;
    int m_fillStyle = noFill;
};

/// A layout cell filled in a style.
struct ORVANE_PLATFORM_API CRectangle : CBaseObject
{
    static constexpr const char* CLASS = "CRectangle";
    std::string m_layer;
    std::string m_layoutCell;
    std::string m_style;
};

/// The layout cell that a coordinate system spans.
struct ORVANE_PLATFORM_API CDiagramArea : CBaseObject
{
    static constexpr const char* CLASS = "CDiagramArea";
    std::string m_layoutCell;
};

/// A diagram area with a scale for each dimension.
struct ORVANE_PLATFORM_API CCoordinateSystemCartesian : CBaseObject
{
    static constexpr const char* CLASS = "CCoordinateSystemCartesian";
    std::string m_diagramArea;
    std::string m_scales[2]; ///< By dimension: 0 horizontal, 1 vertical.
};

/// The range of a dimension, from its left or lower end to the other. Any numbers are taken as they
/// are.
class ORVANE_PLATFORM_API CScale : public CBaseObject
{
public:
    static constexpr const char* CLASS = "CScale";
    /// @param option  0; other values mean the same.
    void SetRange(double start, double stop, int option);
    double GetStart() const { return m_start; }
    double GetStop() const { return m_stop; }

    /// Part of the range that one unit of data takes; kept for the application, not drawn.
    double m_reciprocalSpan = 1.0;

private:
    double m_start = 0.0;
    double m_stop = 1.0;
};

/// Lines across the diagram area at values of one dimension.
struct ORVANE_PLATFORM_API CGridCartesian : CBaseObject
{
    static constexpr const char* CLASS = "CGridCartesian";
    static constexpr const char* linear = "LIN"; ///< Steps of 1, 2 or 5 times a power of 10.
    static constexpr const char* userDefined = "USERDEF"; ///< At the values of the user lines.

    std::string m_layer;
    std::string m_coordinateSystem;
    int m_dimension = 0;
    std::string m_mode = linear;
    int m_count = 8;             ///< Most lines of a linear grid, 2 to 200.
    std::string m_lineStyles[2]; ///< Of levels 1 and 2. Lines are of level 1.
    std::string m_userLines;     ///< A data array.
    std::string m_axisLabel;     ///< Labels for the lines, drawn when the label is.
};

/// The font of labels that refer to it.
struct ORVANE_PLATFORM_API CFontResource : CBaseObject
{
    static constexpr const char* CLASS = "CFontResource";
    std::wstring m_family;
    CQuantity m_size{-1.0, quPoint, nullptr}; ///< Not positive: the application's font size.
};

/// Labels of the lines of the vertical grids that refer to it.
struct ORVANE_PLATFORM_API CAxisLabel : CBaseObject
{
    static constexpr const char* CLASS = "CAxisLabel";
    /// How the labels along one border look.
    struct Position
    {
        bool on = false;
        std::string font;
        std::string style;
    };

    std::string m_layer;
    std::string m_layoutCell;
    int m_cellPlacement[2] = {0, 0}; ///< Kept; the positions decide.
    int m_options[2] = {0, 0};       ///< Kept.
    Position m_positions[2];         ///< Positions 1, along the left border, and 2, the right.
};

/// A line through points, broken where a value is not finite.
struct ORVANE_PLATFORM_API CCurveCartesian : CBaseObject
{
    static constexpr const char* CLASS = "CCurveCartesian";
    std::string m_layer;
    std::string m_coordinateSystem;
    bool m_on = false;
    std::string m_lineStyle;
    std::string m_type;    ///< Kept; every type is drawn alike.
    std::string m_data[2]; ///< Data arrays by dimension; the shorter one counts.
};

} // namespace OndoChartDisplay
