// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/GLEyeStringFormatter.h"

namespace {

constexpr int decimals = 2;

} // namespace

GLEyeStringFormatter::GLEyeStringFormatter() = default;
GLEyeStringFormatter::~GLEyeStringFormatter() = default;

const QString& GLEyeStringFormatter::Format(double value)
{
    m_text = QStringLiteral("%1").arg(value, 0, 'f', decimals);
    return m_text;
}

const QString& GLEyeStringFormatter::FormatWithUnit(double value)
{
    m_text = QStringLiteral("%1 t/T").arg(value, 0, 'f', decimals);
    return m_text;
}
