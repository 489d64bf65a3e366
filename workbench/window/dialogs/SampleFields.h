// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SampleFormat.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <optional>

class QDialogButtonBox;
class QPushButton;

/// The fields of a dialog that asks for the format and the rate of samples, with advice on what is
/// missing, and buttons to open or cancel. The dialog lays them out.
struct SampleFields
{
    /// @param formats  names of formats that are offered.
    /// @param rate     example of a rate.
    SampleFields(QWidget& dialog, const QStringList& formats, const QString& rate);

    /// The format and the rate that were typed; none when they cannot be used.
    std::optional<SampleFormat> format() const;
    std::optional<double> sampleRate() const; ///< Hz

    QComboBox* formats;
    QLineEdit* rate;
    QLabel* advice; ///< has room for two lines
    QDialogButtonBox* buttons;
    QPushButton* open; ///< of them
};
