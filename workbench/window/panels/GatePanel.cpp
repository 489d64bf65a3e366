// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/GatePanel.h"

#include "workbench/feed/SignalFeed.h"
#include "workbench/window/panels/PanelForm.h"
#include "workbench/window/panels/QuantityEditor.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int digits = 7; // of a time

} // namespace

GatePanel::GatePanel(QWidget* parent)
    : QWidget(parent)
{
    QFormLayout* form = panelForm::makeSection(*this, tr("Gate"));
    m_kind = new QComboBox(this);
    m_kind->addItems({tr("What is shown"), tr("From a time to another")});
    m_kind->setToolTip(tr("What eye, constellation and figures are of"));
    m_kind->setAccessibleName(tr("Gate"));
    form->addRow(m_kind);
    m_from = addTime(tr("Be&gin"));
    m_to = addTime(tr("&End"));
    panelForm::addControl(*form, tr("Be&gin"), m_from);
    form->addRow(tr("&End"), m_to);
    connect(m_kind, QOverload<int>::of(&QComboBox::activated), this, [this](int kind) {
        emit chosen({kind != 0, m_from->value(), m_to->value()});
    });
}

TimeEditor* GatePanel::addTime(const QString& name)
{
    auto* editor = new TimeEditor(digits, this);
    editor->setAccessibleName(QString(name).remove(QLatin1Char('&')));
    connect(editor, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        if (m_to->value() > m_from->value())
            emit chosen({true, m_from->value(), m_to->value()});
    });
    return editor;
}

void GatePanel::show(const SignalFeed& feed)
{
    const Gate& gate = feed.gate();
    const auto length = feed.transport().length();
    setVisible(length.has_value());
    if (!length)
        return;
    m_kind->setCurrentIndex(gate.isFixed() ? 1 : 0);
    const double seconds = *length < 1e-3 ? 1e-6 : *length < 1.0 ? 1e-3 : 1.0;
    const QString unit = *length < 1e-3  ? QStringLiteral("µs")
                         : *length < 1.0 ? QStringLiteral("ms")
                                         : QStringLiteral("s");
    const double time = feed.transport().time();
    const double from = gate.isFixed() ? gate.fixedFrom() : std::max(time - feed.span(), 0.0);
    const double to =
        gate.isFixed() ? gate.fixedTo() : std::max(time, std::min(feed.span(), *length));
    const auto symbolRate = feed.symbolRate();
    for (TimeEditor* editor : {m_from, m_to}) {
        const QSignalBlocker quiet(editor);
        editor->setEnabled(gate.isFixed());
        editor->setUnit(unit, seconds,
                        symbolRate ? std::optional(1.0 / *symbolRate) : std::nullopt);
        editor->setRange(0.0, *length);
        editor->setValue(editor == m_from ? from : to);
    }
}
