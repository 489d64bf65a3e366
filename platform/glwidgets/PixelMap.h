// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/IGLDrawObject.h"
#include "platform/glbase/axisDefinition.h"

#include <memory>

namespace values {

/// Maps an axis to pixels: its definition, and the drawer of its grid lines. Each axis has one for
/// its life.
class ORVANE_PLATFORM_API PixelMap
{
public:
    explicit PixelMap(axisDefinition::Orientation orientation);
    ~PixelMap();
    PixelMap(const PixelMap&) = delete;
    PixelMap& operator=(const PixelMap&) = delete;

    axisDefinition& GetAxisDefinition() { return m_axis; }
    /// Draws a line one logical pixel wide in the grid colour at each grid position, across the
    /// widget.
    IGLDrawObject& GetGridDrawer() { return *m_gridDrawer; }

private:
    axisDefinition m_axis;
    std::unique_ptr<IGLDrawObject> m_gridDrawer;
};

} // namespace values
