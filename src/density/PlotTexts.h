// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>

namespace density {

struct PlotState;

/// What times are told in: so many a symbol, up to a thousand of them within reach.
struct TimeScale
{
    double perSymbol = 1.0;
    QString unit = QStringLiteral("T");
};

/// @param farthest  symbols from 0.
TimeScale timeScaleOf(const PlotState& state, double farthest);

/// The lines below a density plot.
class PlotTexts
{
    Q_DECLARE_TR_FUNCTIONS(density::PlotTexts)
public:
    explicit PlotTexts(const PlotState& state)
        : m_state(state)
    {}
    /// Reads the cursors out.
    QString cursors() const;
    /// How a polygon is drawn.
    static QString drawing();
    /// How many symbols are in the picture, what was left out, and what they measure.
    QString symbols() const;

private:
    QString timeOfCursors() const;

    const PlotState& m_state;
};

} // namespace density
