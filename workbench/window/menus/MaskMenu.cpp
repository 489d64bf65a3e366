// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/MaskMenu.h"

#include "platform/values/Settings.h"
#include "workbench/window/density/DensityPane.h"
#include "workbench/window/density/MaskChoice.h"
#include "workbench/window/panes/ViewExport.h"

#include <QActionGroup>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const QString folderKey = QStringLiteral("Density/MaskFolder");
const QString filter = QStringLiteral("JSON (*.json)");

void keepFolder(const QString& file)
{
    values::Settings().setValue(folderKey, QFileInfo(file).absolutePath());
}

} // namespace

MaskMenu::MaskMenu(MaskChoice& masks, DensityPane& eye, QWidget* window)
    : QMenu(tr("&Mask"), window)
    , m_masks(masks)
    , m_eye(eye)
    , m_known(new QActionGroup(this))
{
    const auto addKnown = [this](const QString& text, const std::optional<density::Mask>& mask) {
        QAction* action = m_known->addAction(text);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, mask] {
            if (mask)
                m_eye.setOn(true);
            m_masks.choose(mask);
        });
        addAction(action);
        return action;
    };
    addKnown(tr("&None"), std::nullopt)->setChecked(true);
    for (const density::Mask& mask : density::Mask::standard())
        addKnown(mask.name, mask)->setToolTip(mask.source);
    m_other = m_known->addAction(QString());
    m_other->setCheckable(true);
    addAction(m_other);
    addSeparator();
    connect(addAction(tr("&Load...")), &QAction::triggered, this, &MaskMenu::load);
    m_save = addAction(tr("&Save..."));
    connect(m_save, &QAction::triggered, this, &MaskMenu::save);
    m_draw = addAction(tr("&Draw a polygon"));
    m_draw->setCheckable(true);
    m_draw->setToolTip(tr("Click its corners, the last one twice; Backspace takes one back, Esc "
                          "ends without one"));
    connect(m_draw, &QAction::triggered, this, &MaskMenu::draw);
    m_hits = addAction(tr("Show the &hits"));
    connect(m_hits, &QAction::triggered, this, &MaskMenu::hitsWanted);
    setToolTipsVisible(true);
    connect(&masks, &MaskChoice::changed, this, &MaskMenu::refresh);
    connect(&eye, &DensityPane::switched, this, [this](bool on) {
        if (on)
            connect(m_eye.plot(), &density::DensityPlot::drawingMaskChanged, m_draw,
                    &QAction::setChecked);
        m_draw->setChecked(false);
    });
    refresh();
}

void MaskMenu::refresh()
{
    const auto& mask = m_masks.mask();
    QAction* shown = mask ? m_other : m_known->actions().first();
    const auto& standard = density::Mask::standard();
    for (std::size_t k = 0; mask && k < standard.size(); ++k) {
        if (standard[k].name == mask->name && standard[k].polygons == mask->polygons)
            shown = m_known->actions()[static_cast<int>(k) + 1];
    }
    const QString name = mask && !mask->name.isEmpty() ? mask->name : tr("Drawn by hand");
    m_other->setText(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
    m_other->setVisible(shown == m_other);
    shown->setChecked(true);
    m_save->setEnabled(mask.has_value());
    m_hits->setEnabled(mask.has_value());
}

void MaskMenu::load()
{
    const QString file = QFileDialog::getOpenFileName(
        parentWidget(), tr("Load a mask"), values::Settings().value(folderKey).toString(), filter);
    if (file.isEmpty())
        return;
    keepFolder(file);
    const auto mask = MaskChoice::read(file);
    if (!mask) {
        emit refused(QStringLiteral("%1: %2").arg(file, mask.error().sentence));
        return;
    }
    m_eye.setOn(true);
    m_masks.choose(*mask);
}

void MaskMenu::save()
{
    const QDir folder(values::Settings().value(folderKey).toString());
    QFileDialog dialog(parentWidget(), tr("Save the mask"),
                       folder.filePath(QStringLiteral("mask.json")), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("json"));
    if (dialog.exec() != QDialog::Accepted || !m_masks.mask())
        return;
    const QString name = dialog.selectedFiles().value(0);
    keepFolder(name);
    const auto saved =
        ViewExport::completed(name, QStringLiteral("json")).and_then([this](const QString& file) {
            return ViewExport::save(file, m_masks.mask()->toJson());
        });
    if (!saved)
        emit refused(saved.error().sentence);
}

void MaskMenu::draw(bool on)
{
    if (on)
        m_eye.setOn(true);
    if (!m_eye.isOn())
        return;
    m_eye.plot()->drawMask(on);
    m_eye.plot()->setFocus();
}
