// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"
#include "workbench/window/dialogs/SampleFields.h"

#include <QDialog>

/// Asks for the address of a live signal and, when they do not come with it, for format and rate of
/// its samples. Offers the last choice, from the settings file. Deletes itself when it is closed.
class StreamDialog : public QDialog
{
    Q_OBJECT
public:
    explicit StreamDialog(QWidget* parent = nullptr);

signals:
    void streamChosen(const QString& address, const Recording::Options& options);

private:
    void build();
    void restore();
    void judge();
    void choose();
    QString address() const;
    bool isRadio() const;
    bool hasOwnRate() const;

    QComboBox* m_address;
    SampleFields m_fields;
};
