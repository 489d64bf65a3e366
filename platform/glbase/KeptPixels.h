// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/PixelTarget.h"

#include <QRect>
#include <QRgb>

#include <array>
#include <vector>

/// Keeps what a drawing makes of the pixels below it, and puts that there while all of them are
/// such as it has met. For drawings whose every pixel depends on the one below it alone, like texts
/// on a translucent ground: where few colours come by, these are soon known, and copying them costs
/// a fraction.
///
/// Memory: 32 bytes a device pixel.
class KeptPixels
{
public:
    /// To be called when the drawing is another one.
    void Forget() { m_places.clear(); }

    /// Draws, or puts what is kept.
    /// @param places  device pixels outside of which nothing is drawn.
    template<class Draw>
    void Paint(const PixelTarget& pixels, const std::vector<QRect>& places, const Draw& draw)
    {
        const bool isWhole = Take(pixels, places);
        if (isWhole && Put(pixels))
            return;
        if (isWhole)
            Read(pixels, m_below);
        draw();
        if (isWhole)
            Learn(pixels);
    }

private:
    /// A pixel before and after the drawing.
    struct Meeting
    {
        std::vector<QRgb> below;
        std::vector<QRgb> drawn;
    };

    bool Take(const PixelTarget& pixels, const std::vector<QRect>& places);
    bool Put(const PixelTarget& pixels);
    void Read(const PixelTarget& pixels, std::vector<QRgb>& result) const;
    void Learn(const PixelTarget& pixels);
    template<class Use>
    void ForEachRow(const PixelTarget& pixels, const Use& use) const;

    PixelTarget::Medium m_medium;
    std::vector<QRect> m_places; // empty: nothing is known
    std::vector<QRgb> m_below;   // before the drawing that is learnt
    std::vector<QRgb> m_drawn;
    std::vector<const QRgb*> m_sources; // of the rows that are put
    std::array<Meeting, 3> m_met;       // first with the ground, then with what lies on it
    std::size_t m_next = 1;             // to be replaced
};
