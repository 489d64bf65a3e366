// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QStringList>
#include <QVariantMap>

namespace values {

/// Format of the settings file: INI as QSettings writes it, but for numbers, switches, texts and
/// lists of texts alone. Whoever can write the file must not be able to do more than choose
/// settings, and the serialised objects that QSettings knows as well ("@Variant(...)" and its like)
/// can end a program.
///
/// Reading takes UTF-8 with or without a byte-order mark, and what QSettings wrote. A line that is
/// no setting, or has more than text in it, is left out; all others count. A file of more than
/// 1 MiB is left out as a whole.
///
/// A value that is neither number, switch, text nor list of these is not written.
namespace plainSettings {

constexpr qint64 mostBytes = 1 << 20; ///< of a file

struct Content
{
    QVariantMap values;
    QStringList damaged; ///< Lines that were left out.
};
/// Reads the content of a file.
ORVANE_PLATFORM_API Content parse(const QByteArray& file);
/// The content of a file that has the values.
ORVANE_PLATFORM_API QByteArray written(const QVariantMap& values);

} // namespace plainSettings

} // namespace values
