// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/IGLDrawObject.h"

#include <QString>

/// Background of a plot: fills the widget with a gradient between two colours of the colour
/// service, or with one of them. Its owner sets the members before it draws.
class ORVANE_API GLBackground : public IGLDrawObject
{
public:
    GLBackground();
    ~GLBackground() override;

    bool IsEnabled() override;
    /// Fills the widget's rect(). Leaves pen, brush and saved states of the painter as they were.
    void Draw(GLPainter& painter, GLBaseWidget* widget, int parameter) override;
    const QString& GetDescription() override;
    void SetDescription(const QString& description) override;

    bool m_gradient = true;   ///< A gradient; otherwise solid in m_color2.
    bool m_horizontal = true; ///< Left to right; otherwise top to bottom.
    bool m_inverted = false;  ///< From m_color2 to m_color1.
    int m_color1 = 120;       ///< Number of the gradient's first colour.
    int m_color2 = 3;         ///< Number of its second colour, and of the solid fill.

private:
    friend struct TestAccess;
    QString m_description;
};
