// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/PropertyPagesFrame.h"

#include "platform/gui/IHasPropertyPage.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

PropertyPagesFrame::PropertyPagesFrame(QWidget* parent)
    : QDialog(parent)
    , m_pTabs(new QTabWidget(this))
{
    m_pTabs->setDocumentMode(true); // no frame around the pages
    setWindowTitle(tr("Properties"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* buttons = new QDialogButtonBox(
        QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    QPushButton* apply = buttons->button(QDialogButtonBox::Apply);
    apply->setText(tr("&Apply"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pTabs);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &PropertyPagesFrame::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PropertyPagesFrame::reject);
    connect(apply, &QPushButton::clicked, this, &PropertyPagesFrame::signalApply);
}

PropertyPagesFrame::~PropertyPagesFrame() = default;

void PropertyPagesFrame::addProperty(IHasPropertyPage* provider)
{
    if (!provider)
        return;
    const QString title = provider->GetPropertyPagePath();
    if (QWidget* page = provider->GetPropertyPage(this, title.toLatin1().constData()))
        m_pTabs->addTab(page, title);
}

void PropertyPagesFrame::accept()
{
    const QPointer<PropertyPagesFrame> alive(this); // a receiver may close the whole window
    emit signalApply();
    if (alive)
        QDialog::accept();
}
