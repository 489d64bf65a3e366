// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/MaskTest.h"
#include "workbench/sources/Result.h"
#include "workbench/window/density/EyeFiguring.h"

#include <QCoreApplication>
#include <QObject>

#include <optional>

class DensityPane;

/// The mask that the eye's density is tested against, and the state of the test. A relative mask is
/// placed by the levels and the instant that were found. It is placed anew while all symbols are
/// kept, so that the test loses none.
class MaskChoice : public QObject
{
    Q_OBJECT
public:
    /// Reads a mask from a file.
    static Result<density::Mask> read(const QString& file);

    MaskChoice(DensityPane& eye, QObject* parent);

    /// Starts a test; no mask ends it.
    void choose(const std::optional<density::Mask>& mask);
    const std::optional<density::Mask>& mask() const { return m_mask; }
    /// Sets the margin, see density::Mask, and tests anew.
    void chooseMargin(double margin);
    /// Takes new figures, which may move the mask.
    void place(const EyeFiguredPtr& figured);
    /// Forgets the place of the mask: the plot or the signal is another.
    void restart();

    std::optional<density::MaskTest::Result> result() const;
    /// "pass, 0 hits in 100,000 symbols", or why there is no test; empty without a mask.
    QString text() const;

signals:
    /// The mask or its margin changed.
    void changed();

private:
    void draw(const density::Mask& mask);
    void show();

    DensityPane& m_eye;
    std::optional<density::Mask> m_mask;
    std::optional<density::Withheld> m_reason; // why it is not placed; none: it is
    std::int64_t m_placedAt = 0;               // symbols that were known then
    density::MaskTest::Place m_place;
};
