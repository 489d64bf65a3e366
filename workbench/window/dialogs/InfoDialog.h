// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

/// What is known of a signal and its recording, such as captures and annotations, to read, search
/// and copy.
class InfoDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param lines  plain text, any number of lines.
    InfoDialog(const QStringList& lines, QWidget* parent);
};
