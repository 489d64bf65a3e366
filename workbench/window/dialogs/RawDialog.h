// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"
#include "workbench/window/dialogs/SampleFields.h"

#include <QDialog>

class QSpinBox;

/// Asks for format, rate and channels of raw samples. The answers of the last time, or else those
/// of the file's name, are filled in; a format that hardly fits the first bytes is doubted.
/// Accepted answers are remembered for the file in the settings file. Deletes itself when it is
/// closed.
class RawDialog : public QDialog
{
    Q_OBJECT
public:
    RawDialog(const QString& fileName, QWidget* parent);

    /// The options that were chosen for a file before; none for another file.
    static std::optional<Recording::Options> remembered(const QString& fileName);

signals:
    void chosen(const QString& fileName, const Recording::Options& options);

private:
    void build();
    void propose();
    void judge();
    void choose();
    Recording::Options options() const;

    QString m_fileName;
    SampleFields m_fields;
    QSpinBox* m_channels;
    QLabel* m_length;
};
