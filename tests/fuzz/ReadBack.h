// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Opens a file of some content as the workbench does, reads in it and seeks, and looks whether
/// what comes back fits together; ends the process where it does not.
/// @param name  says what the content is taken for: a.csv, a.sigmf-meta, which has samples beside
///              it, a.sigmf, a.raw, whose first byte chooses the format, or a.wav.
void readBack(const QString& name, const QByteArray& content);
