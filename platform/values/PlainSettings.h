// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QStringList>
#include <QVariantMap>

namespace values {

/// Format of the settings file: INI as QSettings writes it, with numbers, switches, texts and lists
/// of texts only. Serialised objects ("@Variant(...)" and the like) are not read, because they can
/// crash a program: a stranger who can write the file must be able to choose settings and no more.
///
/// Reads UTF-8 with or without a byte-order mark, and files written by QSettings. A line that is
/// not a setting, or holds more than text, is skipped. A file larger than 1 MiB is ignored.
///
/// A value of any other type is not written.
namespace plainSettings {

constexpr qint64 mostBytes = 1 << 20; ///< of a file

/// What a settings file holds.
struct Content
{
    QVariantMap values;  ///< By key, of which the group is a part: "group/key".
    QStringList damaged; ///< Lines that were skipped.
};
/// Reads the content of a file.
ORVANE_PLATFORM_API Content parse(const QByteArray& file);
/// Returns the content of a file with these values.
ORVANE_PLATFORM_API QByteArray written(const QVariantMap& values);

} // namespace plainSettings

} // namespace values
