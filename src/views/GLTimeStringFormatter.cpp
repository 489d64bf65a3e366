// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/GLTimeStringFormatter.h"

namespace {

constexpr int decimals = 1;

} // namespace

GLTimeStringFormatter::GLTimeStringFormatter() = default;
GLTimeStringFormatter::~GLTimeStringFormatter() = default;

const QString& GLTimeStringFormatter::Format(double value)
{
    m_text = QStringLiteral("%1").arg(value, 0, 'f', decimals);
    return m_text;
}

const QString& GLTimeStringFormatter::FormatWithUnit(double value)
{
    m_text = QStringLiteral("%1 t/T").arg(value, 0, 'f', decimals);
    return m_text;
}
