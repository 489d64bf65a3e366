// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

/// Shows the facts about a signal and its recording, such as captures and annotations, to be read,
/// searched and copied.
class InfoDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param lines  plain text, any number of lines.
    InfoDialog(const QStringList& lines, QWidget* parent);
};
