// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/SchemeChoice.h"

#include <QWidget>

class QComboBox;

/// How the window looks.
class AppearancePanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        SchemeChoice::Choice scheme = SchemeChoice::Choice::Desktop;
    };

    explicit AppearancePanel(QWidget* parent);

    void show(const Settings& settings);

signals:
    void chosen(const AppearancePanel::Settings& settings);

private:
    QComboBox* m_scheme;
};
