// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/IStringFormatter.h"

#include <QString>

/// Labels of the X axis of the IQ view: fixed-point numbers with one decimal and a point,
/// whatever the locale; the unit is the symbol period, "t/T". Both operations return the same text
/// member, valid until the next call.
class ORVANE_API GLIQStringFormatter : public IStringFormatter
{
public:
    GLIQStringFormatter();
    ~GLIQStringFormatter() override;

    const QString& Format(double value) override;
    const QString& FormatWithUnit(double value) override;

private:
    friend struct TestAccess;
    QString m_text;
};
