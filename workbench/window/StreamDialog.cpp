// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/StreamDialog.h"

#include "platform/values/Settings.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/window/Units.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace {

const QString addressKey = QStringLiteral("Stream/Address");
const QString formatKey = QStringLiteral("Stream/Format");
const QString sampleRateKey = QStringLiteral("Stream/SampleRate");

/// Hz; none where it is not a rate.
std::optional<double> rateOf(const QString& text)
{
    const auto rate = units::parsedRate(text, QStringLiteral("Hz"));
    return rate && Recording::isSampleRate(*rate) ? rate : std::nullopt;
}

} // namespace

StreamDialog::StreamDialog(QWidget* parent)
    : QDialog(parent)
    , m_address(new QComboBox(this))
    , m_format(new QComboBox(this))
    , m_sampleRate(new QLineEdit(this))
    , m_advice(new QLabel(this))
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
    m_format->addItems({QStringLiteral("cf32"), QStringLiteral("cs16"), QStringLiteral("cs8"),
                        QStringLiteral("cu8"), QStringLiteral("rf32"), QStringLiteral("rs16")});
    m_sampleRate->setPlaceholderText(QStringLiteral("2e6"));
    m_advice->setWordWrap(true);
    m_advice->setMinimumHeight(2 * m_advice->fontMetrics().lineSpacing()); // whatever it says

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
    m_open = buttons->button(QDialogButtonBox::Open);
    connect(buttons, &QDialogButtonBox::accepted, this, &StreamDialog::choose);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_address, &QComboBox::editTextChanged, this, &StreamDialog::judge);
    connect(m_sampleRate, &QLineEdit::textChanged, this, &StreamDialog::judge);

    auto* form = new QFormLayout;
    form->addRow(tr("&Address"), m_address);
    form->addRow(tr("&Format"), m_format);
    form->addRow(tr("&Sample rate, Hz"), m_sampleRate);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_advice);
    column->addWidget(buttons);
}

void StreamDialog::restore()
{
    const values::Settings settings;
    m_address->setEditText(settings.value(addressKey, m_address->itemText(0)).toString());
    m_format->setCurrentText(settings.value(formatKey).toString());
    m_sampleRate->setText(settings.value(sampleRateKey).toString());
}

QString StreamDialog::address() const { return m_address->currentText().trimmed(); }

bool StreamDialog::isRadio() const { return address().startsWith(QLatin1String("soapy://")); }

/// Whether the rate is in the address.
bool StreamDialog::hasOwnRate() const
{
    static const QRegularExpression rate(QStringLiteral("[/,]\\s*rate\\s*="));
    return isRadio() && address().contains(rate);
}

/// Says what is missing, and lets the stream be opened when nothing is.
void StreamDialog::judge()
{
    QString advice;
    if (!LiveAddress::isLive(address()))
        advice = tr("Give zmq://HOST:PORT for a ZeroMQ publisher, soapy://driver=NAME,... for a "
                    "radio, or - for standard input.");
    else if (!rateOf(m_sampleRate->text()) && !hasOwnRate())
        advice = tr("Give the sample rate in hertz, such as 2e6.");
    m_advice->setText(advice);
    m_format->setEnabled(!isRadio());
    m_sampleRate->setEnabled(!hasOwnRate());
    m_open->setEnabled(advice.isEmpty());
}

void StreamDialog::choose()
{
    values::Settings settings;
    settings.setValue(addressKey, address());
    settings.setValue(formatKey, m_format->currentText());
    settings.setValue(sampleRateKey, m_sampleRate->text());
    Recording::Options options;
    if (!hasOwnRate())
        options.sampleRate = rateOf(m_sampleRate->text());
    if (!isRadio())
        options.format = SampleFormat::parse(m_format->currentText());
    const QString chosen = address();
    accept();
    emit streamChosen(chosen, options);
}
