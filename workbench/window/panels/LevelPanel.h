// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

/// The scale of the level axes.
class LevelPanel : public QWidget
{
    Q_OBJECT
public:
    enum class Scale { Automatic, Full };
    struct Settings
    {
        Scale scale = Scale::Automatic;
    };

    explicit LevelPanel(QWidget* parent);

signals:
    void chosen(const LevelPanel::Settings& settings);
};
