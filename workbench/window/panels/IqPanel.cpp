// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/IqPanel.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/window/panels/PanelForm.h"

#include <QCheckBox>

IqPanel::IqPanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("I and Q"));
    m_trajectory = new QCheckBox(tr("&Trajectory"), this);
    m_trajectory->setToolTip(tr("Shows the way between the symbols, too (T)"));
    form->addRow(m_trajectory);
    connect(m_trajectory, &QCheckBox::clicked, this, [this](bool isOn) { emit chosen({isOn}); });
}

void IqPanel::show(const SignalFeed& feed)
{
    m_trajectory->setChecked(!feed.iq().showsDecisions());
    m_trajectory->setEnabled(feed.iq().knowsSymbols());
}
