// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/LevelPanel.h"

#include "workbench/window/panels/PanelForm.h"

#include <QPushButton>

LevelPanel::LevelPanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Level"));
    auto* row = new QWidget(this);
    auto* automatic = new QPushButton(tr("&Auto scale"), row);
    automatic->setToolTip(tr("Fits the axes to what is shown, and lets them follow it (A)"));
    auto* full = new QPushButton(tr("F&ull scale"), row);
    full->setToolTip(tr("Shows -1 to 1, the full scale of recordings (F)"));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(automatic);
    line->addWidget(full);
    form->addRow(row);
    connect(automatic, &QPushButton::clicked, this, [this] { emit chosen({Scale::Automatic}); });
    connect(full, &QPushButton::clicked, this, [this] { emit chosen({Scale::Full}); });
}
