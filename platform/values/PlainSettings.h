// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QSettings>
#include <QStringList>

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
/// Writing keeps a copy of a file that had such lines beside it, named <file>.damaged, or
/// <file>.damaged.2 and so on where there is one with another content. A value that is neither
/// number, switch, text nor list of these is not written.
namespace plainSettings {

/// For the constructors of QSettings.
ORVANE_PLATFORM_API QSettings::Format format();

struct Content
{
    QSettings::SettingsMap values;
    QStringList damaged; ///< Lines that were left out.
};
/// Reads the content of a file.
ORVANE_PLATFORM_API Content parse(const QByteArray& file);

} // namespace plainSettings

/// The application's settings file (see Persistant::StoreFile) in its format.
class ORVANE_PLATFORM_API Settings : public QSettings
{
public:
    Settings();
};

} // namespace values
