// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QDialog>

class IHasPropertyPage;
class QTabWidget;

/// Properties dialog: one tab for each provider, OK, Cancel and Apply. OK (also Return, or
/// accept()) and Apply emit signalApply() while the pages exist; Cancel (also Escape, or reject())
/// does not.
class ORVANE_PLATFORM_API PropertyPagesFrame : public QDialog
{
    Q_OBJECT
public:
    explicit PropertyPagesFrame(QWidget* parent = nullptr);
    ~PropertyPagesFrame() override;

    /// Asks the provider for its page at once and appends it; the page belongs to the dialog. Null,
    /// or a provider without a page, is ignored.
    void addProperty(IHasPropertyPage* provider);

    void accept() override;

Q_SIGNALS:
    void signalApply();

private:
    QTabWidget* m_pTabs;
};
