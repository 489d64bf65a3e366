// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/SampleFields.h"

#include "workbench/player/Units.h"
#include "workbench/sources/Recording.h"

#include <QDialogButtonBox>
#include <QPushButton>

SampleFields::SampleFields(QWidget& dialog, const QStringList& formats, const QString& rate)
    : formats(new QComboBox(&dialog))
    , rate(new QLineEdit(&dialog))
    , advice(new QLabel(&dialog))
    , buttons(new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, &dialog))
    , open(buttons->button(QDialogButtonBox::Open))
{
    this->formats->addItems(formats);
    this->rate->setPlaceholderText(rate);
    advice->setTextFormat(Qt::PlainText);
    advice->setWordWrap(true);
    advice->setMinimumHeight(2 * advice->fontMetrics().lineSpacing()); // for any advice
}

std::optional<SampleFormat> SampleFields::format() const
{
    return SampleFormat::parse(formats->currentText().trimmed());
}

std::optional<double> SampleFields::sampleRate() const
{
    const auto hertz = units::parsedRate(rate->text(), QStringLiteral("Hz"));
    return hertz && Recording::isSampleRate(*hertz) ? hertz : std::nullopt;
}
