// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/MaskTest.h"
#include "workbench/sources/Result.h"
#include "workbench/window/density/EyeFiguring.h"

#include <QCoreApplication>
#include <QObject>

#include <optional>

class DensityPane;

/// The mask that the eye's density is tested against, and how that goes. Relative masks are placed
/// by the levels and the instant that were found, again and again as long as all symbols are kept,
/// so that none is lost to the test.
class MaskChoice : public QObject
{
    Q_OBJECT
public:
    /// Reads a file of a mask.
    static Result<density::Mask> read(const QString& file);

    MaskChoice(DensityPane& eye, QObject* parent);

    /// None ends the test.
    void choose(const std::optional<density::Mask>& mask);
    const std::optional<density::Mask>& mask() const { return m_mask; }
    /// By which it grows to all sides, in its own units: see density::Mask. Tests anew.
    void setMargin(double margin);
    /// What was found anew, as long as it may move the mask.
    void place(const EyeFiguredPtr& figured);
    /// The plot, or its symbols, are others: nothing is placed.
    void restart();

    std::optional<density::MaskTest::Result> result() const;
    /// "pass, 0 hits in 100,000 symbols", or why there is no test; empty without a mask.
    QString text() const;

signals:
    /// Another mask, or margin.
    void changed();

private:
    void draw(const density::Mask& mask);

    DensityPane& m_eye;
    std::optional<density::Mask> m_mask;
    std::optional<density::Withheld> m_reason; // why it is not placed; none: it is
    std::int64_t m_placedAt = 0;               // symbols that were known then
    double m_instant = 0.0, m_low = 0.0, m_high = 1.0;
};
