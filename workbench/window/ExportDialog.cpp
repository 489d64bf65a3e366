// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ExportDialog.h"

#include "platform/values/PlainSettings.h"

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

namespace {

const QString folderKey = QStringLiteral("Export/Folder");

} // namespace

ExportDialog::ExportDialog(const ViewExport& exporter, const ViewPanes& panes, std::size_t index,
                           QWidget* parent)
    : QDialog(parent)
    , m_export(exporter)
    , m_panes(panes)
    , m_view(new QComboBox(this))
    , m_width(new QSpinBox(this))
    , m_height(new QSpinBox(this))
    , m_scale(new QDoubleSpinBox(this))
    , m_trouble(new QLabel(this))
{
    m_trouble->setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Export"));
    auto* form = new QFormLayout(this);
    for (const ViewPanes::Pane& pane : panes.panes())
        m_view->addItem(pane.showing->text().remove(QLatin1Char('&')));
    m_view->setCurrentIndex(static_cast<int>(index));
    for (QSpinBox* side : {m_width, m_height}) {
        side->setRange(1, ViewExport::maxSide);
        side->setSuffix(QChar(0x2009) + tr("pixels"));
    }
    m_scale->setRange(ViewExport::minScale, ViewExport::maxScale);
    m_scale->setSingleStep(0.5);
    m_scale->setValue(1.0);
    m_scale->setToolTip(tr("Of PNG: pixels to one of the screen"));
    form->addRow(tr("&View"), m_view);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    form->addRow(tr("&Scale"), m_scale);
    m_trouble->setWordWrap(true);
    m_trouble->hide();
    form->addRow(m_trouble);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::chooseFile);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_view, QOverload<int>::of(&QComboBox::activated), this, &ExportDialog::proposeSize);
    proposeSize();
}

void ExportDialog::proposeSize()
{
    const QSize size =
        m_panes.panes().at(static_cast<std::size_t>(m_view->currentIndex())).view->size();
    m_width->setValue(size.width());
    m_height->setValue(size.height());
}

void ExportDialog::chooseFile()
{
    const auto index = static_cast<std::size_t>(m_view->currentIndex());
    values::Settings settings;
    const QDir folder(settings.value(folderKey).toString());
    const QString proposed = folder.filePath(QString::fromLatin1(m_panes.panes().at(index).name) +
                                             QStringLiteral(".png"));
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Export"), proposed,
        tr("Pictures and tables") + QStringLiteral(" (*.png *.svg *.pdf *.csv)"));
    if (file.isEmpty())
        return;
    QString why;
    if (const auto format = ViewExport::formatOf(file)) {
        const QByteArray content = m_export.content(
            index, *format, {m_width->value(), m_height->value()}, m_scale->value(), why);
        if (!content.isEmpty())
            why = ViewExport::save(file, content);
    } else {
        why = tr("%1: the ending says what it becomes; give .png, .svg, .pdf or .csv").arg(file);
    }
    if (why.isEmpty()) {
        settings.setValue(folderKey, QFileInfo(file).absolutePath());
        accept();
        return;
    }
    m_trouble->setText(why);
    constexpr int charactersPerLine = 48;
    const int width = charactersPerLine * m_trouble->fontMetrics().averageCharWidth();
    m_trouble->setFixedSize(width, m_trouble->heightForWidth(width)); // a layout would cut it
    m_trouble->show();
    adjustSize();
}
