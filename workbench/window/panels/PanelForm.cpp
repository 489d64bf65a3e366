// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/PanelForm.h"

#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

QFormLayout* panelForm::addSection(QWidget& panel, const QString& title)
{
    auto* section = new QWidget(&panel);
    auto* form = new QFormLayout(section);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(10);
    form->setVerticalSpacing(7);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* heading = new QLabel(title, section);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    form->addRow(heading);
    panel.layout()->addWidget(section);
    return form;
}

QFormLayout* panelForm::makeSection(QWidget& panel, const QString& title)
{
    auto* sections = new QVBoxLayout(&panel);
    sections->setContentsMargins(0, 0, 0, 0);
    return addSection(panel, title);
}

void panelForm::addControl(QFormLayout& form, const QString& name, QWidget* control)
{
    form.addRow(name, control);
    form.labelForField(control)->setMinimumWidth(nameWidth);
}

QLabel* panelForm::addFact(QFormLayout& form, const QString& name)
{
    auto* value = new QLabel(form.parentWidget());
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    addControl(form, name, value);
    return value;
}

void panelForm::reserveRoom(QLabel& label, const QStringList& texts)
{
    const QString shown = label.text();
    int width = label.minimumWidth();
    for (const QString& text : texts) {
        label.setText(text);
        width = std::max(width, label.minimumSizeHint().width());
    }
    label.setText(shown);
    label.setMinimumWidth(width);
}

QSlider* panelForm::addSlider(QFormLayout& form, const QString& name, int lowest, int highest,
                              QLabel** value)
{
    auto* row = new QWidget(form.parentWidget());
    auto* slider = new QSlider(Qt::Horizontal, row);
    slider->setRange(lowest, highest);
    slider->setAccessibleName(name);
    *value = new QLabel(row);
    reserveRoom(**value, {QStringLiteral("-888.8 Hz"), QStringLiteral("-8888 Hz")});
    (*value)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(slider, 1);
    line->addWidget(*value);
    addControl(form, name, row);
    return slider;
}
