// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/StreamDialog.h"

#include "platform/values/Settings.h"
#include "workbench/sources/LiveAddress.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace {

const QString addressKey = QStringLiteral("Stream/Address");
const QString formatKey = QStringLiteral("Stream/Format");
const QString sampleRateKey = QStringLiteral("Stream/SampleRate");

} // namespace

StreamDialog::StreamDialog(QWidget* parent)
    : QDialog(parent)
    , m_address(new QComboBox(this))
    , m_fields(*this, {"cf32", "cs16", "cs8", "cu8", "rf32", "rs16"}, QStringLiteral("2e6"))
{
    setWindowTitle(tr("Open stream"));
    setAttribute(Qt::WA_DeleteOnClose);
    build();
    restore();
    judge();
}

void StreamDialog::build()
{
    m_address->setEditable(true);
    m_address->addItems({QStringLiteral("zmq://127.0.0.1:5555"),
                         QStringLiteral("soapy://driver=rtlsdr,freq=433.92e6,rate=2e6"),
                         QStringLiteral("-")});
    m_address->setMinimumContentsLength(44);
    connect(m_fields.buttons, &QDialogButtonBox::accepted, this, &StreamDialog::choose);
    connect(m_fields.buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_address, &QComboBox::editTextChanged, this, &StreamDialog::judge);
    connect(m_fields.rate, &QLineEdit::textChanged, this, &StreamDialog::judge);

    auto* form = new QFormLayout;
    form->addRow(tr("&Address"), m_address);
    form->addRow(tr("&Format"), m_fields.formats);
    form->addRow(tr("&Sample rate, Hz"), m_fields.rate);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_fields.advice);
    column->addWidget(m_fields.buttons);
}

void StreamDialog::restore()
{
    const values::Settings settings;
    m_address->setEditText(settings.value(addressKey, m_address->itemText(0)).toString());
    m_fields.formats->setCurrentText(settings.value(formatKey).toString());
    m_fields.rate->setText(settings.value(sampleRateKey).toString());
}

QString StreamDialog::address() const { return m_address->currentText().trimmed(); }

bool StreamDialog::isRadio() const { return address().startsWith(QLatin1String("soapy://")); }

/// Whether the rate is in the address.
bool StreamDialog::hasOwnRate() const
{
    static const QRegularExpression rate(QStringLiteral("[/,]\\s*rate\\s*="));
    return isRadio() && address().contains(rate);
}

/// Shows what is missing, and enables opening when nothing is.
void StreamDialog::judge()
{
    QString advice;
    if (!LiveAddress::isLive(address()))
        advice = tr("Give zmq://HOST:PORT for a ZeroMQ publisher, soapy://driver=NAME,... for a "
                    "radio, or - for standard input.");
    else if (!m_fields.sampleRate() && !hasOwnRate())
        advice = tr("Give the sample rate in hertz, such as 2e6.");
    m_fields.advice->setText(advice);
    m_fields.formats->setEnabled(!isRadio());
    m_fields.rate->setEnabled(!hasOwnRate());
    m_fields.open->setEnabled(advice.isEmpty());
}

void StreamDialog::choose()
{
    values::Settings settings;
    settings.setValue(addressKey, address());
    settings.setValue(formatKey, m_fields.formats->currentText());
    settings.setValue(sampleRateKey, m_fields.rate->text());
    Recording::Options options;
    if (!hasOwnRate())
        options.sampleRate = m_fields.sampleRate();
    if (!isRadio())
        options.format = m_fields.format();
    const QString chosen = address();
    accept();
    emit streamChosen(chosen, options);
}
