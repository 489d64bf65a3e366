// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/GLOrvanePropertyPage.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace {

template<class Editor, class Number>
void setUp(Editor* editor, Number minimum, Number maximum, Number value, bool enabled)
{
    if (!editor)
        return;
    editor->setRange(minimum, maximum);
    editor->setValue(value);
    editor->setEnabled(enabled);
}

} // namespace

GLOrvanePropertyPage::GLOrvanePropertyPage(QWidget* parent, const char* name, bool showBufferSize,
                                           bool showAging)
    : QWidget(parent)
{
    setObjectName(QString::fromLatin1(name));

    auto* grid = new QGridLayout(this);
    grid->setRowStretch(0, 2);
    grid->setColumnStretch(4, 2);
    grid->setColumnMinimumWidth(1, 75);

    m_pXAxisMin = AddRow<QDoubleSpinBox>(grid, tr("XAxis Min: "));
    m_pXAxisMax = AddRow<QDoubleSpinBox>(grid, tr("XAxis Max: "));
    m_pYAxisMin = AddRow<QDoubleSpinBox>(grid, tr("YAxis Min: "));
    m_pYAxisMax = AddRow<QDoubleSpinBox>(grid, tr("YAxis Max: "));
    m_pShowGrid = AddRow<QCheckBox>(grid, tr("Show Grid: "));
    if (showBufferSize)
        m_pBufferSize = AddRow<QSpinBox>(grid, tr("Buffer Size: "));
    if (showAging) {
        m_pAging = AddRow<QDoubleSpinBox>(grid, tr("Aging: "));
        grid->addWidget(new QLabel(tr("s"), this), grid->rowCount() - 1, 2, Qt::AlignLeft);
    }
}

GLOrvanePropertyPage::~GLOrvanePropertyPage() = default;

// Appends a row. The grid counts the empty row 0, so its row count is the next free row.
template<class Editor>
Editor* GLOrvanePropertyPage::AddRow(QGridLayout* grid, const QString& text)
{
    const int row = grid->rowCount();
    auto* label = new QLabel(text, this);
    auto* editor = new Editor(this);
    label->setBuddy(editor);
    grid->addWidget(label, row, 0, Qt::AlignLeft);
    grid->addWidget(editor, row, 1);
    return editor;
}

void GLOrvanePropertyPage::SetXAxisMin(double minimum, double maximum, double value, bool enabled)
{
    setUp(m_pXAxisMin, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetXAxisMax(double minimum, double maximum, double value, bool enabled)
{
    setUp(m_pXAxisMax, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetYAxisMin(double minimum, double maximum, double value, bool enabled)
{
    setUp(m_pYAxisMin, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetYAxisMax(double minimum, double maximum, double value, bool enabled)
{
    setUp(m_pYAxisMax, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetBufferSize(int minimum, int maximum, int value, bool enabled)
{
    setUp(m_pBufferSize, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetAging(double minimum, double maximum, double value, bool enabled)
{
    setUp(m_pAging, minimum, maximum, value, enabled);
}

void GLOrvanePropertyPage::SetShowGrid(bool value, bool enabled)
{
    m_pShowGrid->setChecked(value);
    m_pShowGrid->setEnabled(enabled);
}

double GLOrvanePropertyPage::GetXAxisMin() const { return m_pXAxisMin->value(); }
double GLOrvanePropertyPage::GetXAxisMax() const { return m_pXAxisMax->value(); }
double GLOrvanePropertyPage::GetYAxisMin() const { return m_pYAxisMin->value(); }
double GLOrvanePropertyPage::GetYAxisMax() const { return m_pYAxisMax->value(); }
int GLOrvanePropertyPage::GetBufferSize() const
{
    return m_pBufferSize ? m_pBufferSize->value() : 0;
}
double GLOrvanePropertyPage::GetAging() const { return m_pAging ? m_pAging->value() : 0.0; }
bool GLOrvanePropertyPage::GetShowGrid() const { return m_pShowGrid->isChecked(); }
