// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/RawDialog.h"

#include "platform/values/Settings.h"
#include "workbench/player/Units.h"
#include "workbench/sources/PlainText.h"
#include "workbench/sources/RawGuess.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace {

const QString filesKey = QStringLiteral("RawFiles/Known"); // "cu8 250000 1 /path", the latest first
constexpr int maxFileCount = 100;
constexpr int maxChannelCount = 64;

QString placeOf(const QString& fileName) { return QFileInfo(fileName).absoluteFilePath(); }

/// The remembered options of a line, if it is that of the file.
std::optional<Recording::Options> parsed(const QString& line, const QString& place)
{
    Recording::Options options;
    options.format = SampleFormat::parse(line.section(QLatin1Char(' '), 0, 0));
    options.sampleRate = line.section(QLatin1Char(' '), 1, 1).toDouble();
    options.channelCount = line.section(QLatin1Char(' '), 2, 2).toInt();
    const bool isGood = options.format && Recording::isSampleRate(*options.sampleRate) &&
                        options.channelCount >= 1 && options.channelCount <= maxChannelCount &&
                        line.section(QLatin1Char(' '), 3) == place;
    return isGood ? std::optional(options) : std::nullopt;
}

void remember(const QString& place, const Recording::Options& options)
{
    values::Settings settings;
    QStringList lines = settings.value(filesKey).toStringList();
    const auto isOfIt = [&place](const QString& line) {
        return line.section(QLatin1Char(' '), 3) == place;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isOfIt), lines.end());
    lines.prepend(QStringLiteral("%1 %2 %3 %4")
                      .arg(options.format->name())
                      .arg(*options.sampleRate, 0, 'g', 17)
                      .arg(options.channelCount)
                      .arg(place));
    settings.setValue(filesKey, QStringList(lines.mid(0, maxFileCount)));
}

} // namespace

RawDialog::RawDialog(const QString& fileName, QWidget* parent)
    : QDialog(parent)
    , m_fileName(fileName)
    , m_fields(
          *this,
          {"cu8", "cs8", "cs16", "cs32", "cf32", "cf64", "u8", "s8", "s16", "s32", "f32", "f64"},
          QStringLiteral("250 kHz"))
    , m_channels(new QSpinBox(this))
    , m_length(new QLabel(this))
{
    setWindowTitle(tr("Raw samples"));
    setAttribute(Qt::WA_DeleteOnClose);
    build();
    propose();
    judge();
}

void RawDialog::build()
{
    constexpr int charactersPerLine = 52;
    m_fields.formats->setEditable(true);
    m_fields.formats->setToolTip(
        tr("c: I and Q; u, s, f: without sign, with one, floating point; bits; _be "
           "where the high byte comes first"));
    m_channels->setRange(1, maxChannelCount);
    setTabOrder(m_fields.rate, m_channels); // before the buttons
    m_fields.advice->setFixedWidth(charactersPerLine * fontMetrics().averageCharWidth());
    connect(m_fields.buttons, &QDialogButtonBox::accepted, this, &RawDialog::choose);
    connect(m_fields.buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_fields.formats, &QComboBox::editTextChanged, this, &RawDialog::judge);
    connect(m_fields.rate, &QLineEdit::textChanged, this, &RawDialog::judge);
    connect(m_channels, QOverload<int>::of(&QSpinBox::valueChanged), this, &RawDialog::judge);

    auto* form = new QFormLayout(this);
    auto* name = new QLabel(plainText(QFileInfo(m_fileName).fileName()), this);
    name->setTextFormat(Qt::PlainText);
    form->addRow(tr("File"), name);
    form->addRow(tr("&Format"), m_fields.formats);
    form->addRow(tr("&Sample rate"), m_fields.rate);
    form->addRow(tr("&Channels"), m_channels);
    form->addRow(tr("Length"), m_length);
    form->addRow(m_fields.advice);
    form->addRow(m_fields.buttons);
}

void RawDialog::propose()
{
    const RawGuess guess = RawGuess::ofName(m_fileName);
    Recording::Options known;
    known.format = guess.format;
    known.sampleRate = guess.sampleRate;
    known.channelCount = guess.channelCount;
    known = remembered(m_fileName).value_or(known);
    m_fields.formats->setEditText(known.format ? known.format->name() : QString());
    m_fields.rate->setText(
        known.sampleRate ? units::exactRate(*known.sampleRate, QStringLiteral("Hz")) : QString());
    m_channels->setValue(known.channelCount);
}

Recording::Options RawDialog::options() const
{
    Recording::Options options;
    options.format = m_fields.format();
    options.sampleRate = m_fields.sampleRate();
    options.channelCount = m_channels->value();
    return options;
}

/// Shows what is missing or doubtful, and enables opening when nothing is missing.
void RawDialog::judge()
{
    const Recording::Options given = options();
    QString advice;
    if (!given.format)
        advice = tr("Choose the format of the samples, such as cu8 or cf32.");
    else if (!given.sampleRate)
        advice = tr("Give the sample rate, such as 250 kHz or 2e6.");
    else if (const auto doubt = RawGuess::doubt(m_fileName, *given.format))
        advice = tr("Look again: %1.").arg(doubt->sentence);
    m_fields.advice->setText(advice);
    m_fields.open->setEnabled(given.format && given.sampleRate);
    m_length->setText(QString());
    if (!given.format || !given.sampleRate)
        return;
    const auto sampleSize = static_cast<double>(given.format->byteCount()) *
                            given.format->valueCount() * given.channelCount;
    const double seconds =
        static_cast<double>(QFileInfo(m_fileName).size()) / sampleSize / *given.sampleRate;
    m_length->setText(units::duration(seconds));
}

void RawDialog::choose()
{
    const Recording::Options given = options();
    const QString fileName = m_fileName;
    remember(placeOf(fileName), given);
    accept();
    emit chosen(fileName, given);
}

std::optional<Recording::Options> RawDialog::remembered(const QString& fileName)
{
    const QString place = placeOf(fileName);
    for (const QString& line : values::Settings().value(filesKey).toStringList()) {
        if (const auto options = parsed(line, place))
            return options;
    }
    return std::nullopt;
}
