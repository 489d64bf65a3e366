// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/IStringFormatter.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

// clang-format off
/// Range and pixel length of an axis, and the grid and labels that follow from them.
///
/// Pixel of a value v, with all arithmetic in double:
///
///   horizontal  trunc((length - 1) * (v - start) / (stop - start)), from the left border
///   vertical    length - trunc((length - 1) * (v - start) / (stop - start)), from the top border
///
/// Grid lines stand at whole multiples of 1, 2 or 5 times a power of ten, one for every 60 to 100
/// pixels or so (30 to 80 on a vertical axis), in the order from start to stop, at most
/// MaxTickCount or the tick limit. There are none on a range that is empty, not finite, or too
/// narrow for its numbers to be told apart, or on a length below 2 pixels. The ticks are computed
/// at the first use after a change.
class ORVANE_PLATFORM_API axisDefinition
// clang-format on
{
public:
    enum class Orientation { Horizontal, Vertical };
    static constexpr int MaxTickCount = 200;

    /// A grid line.
    struct Tick
    {
        double value; ///< Integer times the step: never an accumulated sum, never -0.
        int pixel;    ///< Pixel of the value.
    };

    explicit axisDefinition(Orientation orientation);
    ~axisDefinition();

    Orientation GetOrientation() const { return m_orientation; }
    /// Any range is taken as it is: reversed, empty, NaN.
    void SetRange(double start, double stop);
    double GetStart() const { return m_start; }
    double GetStop() const { return m_stop; }
    /// Length of the axis in pixels.
    void SetLength(int pixels);
    int GetLength() const { return m_length; }

    /// Limits the number of ticks, from 2 to MaxTickCount; MaxTickCount at first.
    void SetTickLimit(int count);

    /// True when values and pixels map to one another: both ends finite, different, and their
    /// difference finite and not 0; length at least 2 pixels.
    bool IsUsable() const;
    /// Pixel of a value, clamped to +-1e9. On an axis that is not usable 0 (horizontal) or the
    /// length (vertical).
    int ValueToPixel(double value) const;
    /// Inverse of ValueToPixel, exact at the pixel's edge; the start when the axis is not usable.
    double PixelToValue(int pixel) const;

    /// Pixel positions of the grid lines.
    std::vector<int> GetGridPos() const;
    /// The grid lines. Valid until the axis changes.
    const std::vector<Tick>& GetTicks() const;

    /// Replaces the label formatter. Without one, labels have as many digits as the grid step
    /// needs, and labels with unit (read-outs) as many as tell pixels apart. The same happens where
    /// the formatter writes two ticks, or for read-outs two neighbouring pixels, alike, or writes
    /// "-0".
    void SetStringFormatter(std::shared_ptr<IStringFormatter> formatter);
    /// Sets the text after the number of a read-out, leading blank included, in place of the
    /// formatter's unit.
    void SetUnit(const QString& unit);
    /// A value as the label of a grid line.
    QString Label(double value) const;
    /// A value as a read-out, with its unit.
    QString LabelWithUnit(double value) const;

private:
    void Recompute() const;
    using Format = const QString& (IStringFormatter::*)(double);
    /// Whether the formatter writes all these values differently, and none as "-0".
    bool CanFormat(const std::vector<double>& values, Format format) const;
    bool CanFormatPixels() const;
    static QString Free(double value);
    /// Rounded to a decimal place.
    static QString Plain(double value, int lastPlace, int mostDecimals);

    Orientation m_orientation;
    double m_start = -1.0;
    double m_stop = 1.0;
    int m_length = 0;
    int m_tickLimit = MaxTickCount;
    std::shared_ptr<IStringFormatter> m_formatter;
    std::optional<QString> m_unit;
    mutable bool m_dirty = true;
    mutable int m_stepExponent = 0; // decimal place of the grid step, where there are ticks
    mutable std::vector<Tick> m_ticks;
    mutable std::vector<QString> m_plainLabels; // of ticks, as far as asked for
    mutable bool m_canFormatTicks = false;
    mutable std::optional<bool> m_canFormatPixels; // none: not yet known
};
