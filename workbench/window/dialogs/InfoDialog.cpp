// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/InfoDialog.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

InfoDialog::InfoDialog(const QStringList& lines, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Information"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(640, 400);
    auto* text = new QPlainTextEdit(lines.join(QLatin1Char('\n')), this);
    text->setReadOnly(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addWidget(buttons);
}
