// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* close = new QToolButton(this);
    close->setText(QString(QChar(0x00d7)));
    close->setAutoRaise(true);
    close->setToolTip(tr("Close this message (Esc)"));
    close->setAccessibleName(tr("Close this message"));
    connect(close, &QToolButton::clicked, this, &QWidget::hide);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 4, 4);
    row->addWidget(m_text, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::say(const QString& sentence)
{
    m_text->setText(sentence);
    show();
}

QString NoticeBar::text() const { return m_text->text(); }
