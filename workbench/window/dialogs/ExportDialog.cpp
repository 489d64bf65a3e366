// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/ExportDialog.h"

#include "platform/values/Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace {

const QString folderKey = QStringLiteral("Export/Folder");
const QString formatKey = QStringLiteral("Export/Format");
const QString footerKey = QStringLiteral("Export/Footer");

} // namespace

ExportDialog::ExportDialog(const ViewExport& exporter, const ViewPanes& panes, std::size_t index,
                           QWidget* parent)
    : QDialog(parent)
    , m_export(exporter)
    , m_panes(panes)
    , m_view(new QComboBox(this))
    , m_format(new QComboBox(this))
    , m_footer(new QCheckBox(tr("Source and &figures below it"), this))
    , m_width(new QSpinBox(this))
    , m_height(new QSpinBox(this))
    , m_scale(new QDoubleSpinBox(this))
    , m_trouble(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Export"));
    for (const ViewPanes::Pane& pane : panes.panes())
        m_view->addItem(pane.showing->text().remove(QLatin1Char('&')));
    m_view->setCurrentIndex(static_cast<int>(index));
    m_format->addItems({tr("PNG: pixels"), tr("SVG: vectors"), tr("PDF: vectors"),
                        tr("CSV: data as a table"), tr("NPY: counts of a density")});
    const values::Settings settings;
    const int kept = int(ViewExport::endings().indexOf(settings.value(formatKey).toString()));
    m_format->setCurrentIndex(std::max(kept, 0));
    m_footer->setChecked(settings.value(footerKey, false).toBool());
    m_footer->setToolTip(tr("Which signal, how it was received, and what it measures"));
    build();
    proposeSize();
    showFormat();
}

void ExportDialog::build()
{
    for (QSpinBox* side : {m_width, m_height}) {
        side->setRange(1, ViewExport::maxSide);
        side->setSuffix(QChar(0x2009) + tr("pixels"));
    }
    m_scale->setRange(ViewExport::minScale, ViewExport::maxScale);
    m_scale->setSingleStep(0.5);
    m_scale->setValue(1.0);
    m_scale->setToolTip(tr("Of PNG: pixels to one of the screen"));
    m_trouble->setTextFormat(Qt::PlainText);
    m_trouble->setWordWrap(true);
    m_trouble->hide();
    auto* form = new QFormLayout(this);
    form->addRow(tr("&View"), m_view);
    form->addRow(tr("F&ormat"), m_format);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    form->addRow(tr("&Scale"), m_scale);
    form->addRow(m_footer);
    form->addRow(m_trouble);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::chooseFile);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_view, QOverload<int>::of(&QComboBox::activated), this, &ExportDialog::proposeSize);
    connect(m_format, QOverload<int>::of(&QComboBox::activated), this, &ExportDialog::showFormat);
}

ViewExport::Format ExportDialog::format() const
{
    return static_cast<ViewExport::Format>(m_format->currentIndex());
}

void ExportDialog::proposeSize()
{
    const QSize size =
        m_panes.panes().at(static_cast<std::size_t>(m_view->currentIndex())).view->size();
    m_width->setValue(size.width());
    m_height->setValue(size.height());
}

/// Enables only the settings of the chosen format.
void ExportDialog::showFormat()
{
    const bool isPicture = format() < ViewExport::Format::Csv;
    for (QWidget* control : std::initializer_list<QWidget*>{m_width, m_height, m_footer})
        control->setEnabled(isPicture);
    m_scale->setEnabled(format() == ViewExport::Format::Png);
}

QString ExportDialog::askForFile()
{
    const auto index = static_cast<std::size_t>(m_view->currentIndex());
    const QString ending = ViewExport::endings()[m_format->currentIndex()];
    const QDir folder(values::Settings().value(folderKey).toString());
    QFileDialog dialog(this, tr("Export"),
                       folder.filePath(QString::fromLatin1(m_panes.panes().at(index).name) +
                                       QLatin1Char('.') + ending),
                       QStringLiteral("%1 (*.%2)").arg(ending.toUpper(), ending));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    return dialog.exec() == Accepted ? dialog.selectedFiles().value(0) : QString();
}

Result<void> ExportDialog::write(const QString& name)
{
    const QString ending = ViewExport::endings()[m_format->currentIndex()];
    const auto file = ViewExport::completed(name, ending);
    if (!file)
        return tl::unexpected(file.error());
    if (ViewExport::formatOf(*file) != format())
        return failure(
            tr("%1: the name has another ending than %2; leave it out").arg(*file, ending));
    return m_export
        .content(static_cast<std::size_t>(m_view->currentIndex()), format(),
                 {m_width->value(), m_height->value()}, m_scale->value(),
                 m_footer->isChecked() ? ViewExport::Footer::Figures : ViewExport::Footer::None)
        .and_then([&file](const QByteArray& content) { return ViewExport::save(*file, content); });
}

void ExportDialog::chooseFile()
{
    const QString file = askForFile();
    if (file.isEmpty())
        return;
    const auto written = write(file);
    if (written) {
        values::Settings settings;
        settings.setValue(folderKey, QFileInfo(file).absolutePath());
        settings.setValue(formatKey, ViewExport::endings()[m_format->currentIndex()]);
        settings.setValue(footerKey, m_footer->isChecked());
        accept();
        return;
    }
    m_trouble->setText(written.error().sentence);
    constexpr int charactersPerLine = 48;
    const int width = charactersPerLine * m_trouble->fontMetrics().averageCharWidth();
    m_trouble->setFixedSize(width, m_trouble->heightForWidth(width)); // a layout would cut it
    m_trouble->show();
    adjustSize();
}
