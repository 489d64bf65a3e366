// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/AppearancePanel.h"

#include "workbench/window/panels/PanelForm.h"

#include <QComboBox>

AppearancePanel::AppearancePanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Appearance"));
    m_scheme = new QComboBox(this);
    m_scheme->addItems({tr("As the desktop"), tr("Dark"), tr("Light")});
    panelForm::addControl(*form, tr("Sche&me"), m_scheme);
    connect(m_scheme, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit chosen({static_cast<SchemeChoice::Choice>(index)}); });
}

void AppearancePanel::show(const Settings& settings)
{
    m_scheme->setCurrentIndex(static_cast<int>(settings.scheme));
}
