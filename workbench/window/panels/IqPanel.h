// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QCheckBox;
class SignalFeed;

/// What the constellation shows.
class IqPanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        bool showsTrajectory = false; ///< as in IqFeed
    };

    explicit IqPanel(QWidget* parent);

    void show(const SignalFeed& feed);

signals:
    void chosen(const IqPanel::Settings& settings);

private:
    QCheckBox* m_trajectory;
};
