// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/GLIQStringFormatter.h"

namespace {

constexpr int decimals = 1;

} // namespace

GLIQStringFormatter::GLIQStringFormatter() = default;
GLIQStringFormatter::~GLIQStringFormatter() = default;

const QString& GLIQStringFormatter::Format(double value)
{
    m_text = QStringLiteral("%1").arg(value, 0, 'f', decimals);
    return m_text;
}

const QString& GLIQStringFormatter::FormatWithUnit(double value)
{
    m_text = QStringLiteral("%1 t/T").arg(value, 0, 'f', decimals);
    return m_text;
}
