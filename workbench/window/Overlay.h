// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <initializer_list>

/// Strips that lie over the top of other widgets, one below the other, with an edge around each;
/// the widgets below keep their place. As high as the strips that are shown.
class Overlay : public QWidget
{
    Q_OBJECT
public:
    /// @param under   a sibling to be, of the same parent.
    /// @param top     height that stays free at the top of it, pixels.
    /// @param strips  from top to bottom; become children.
    Overlay(QWidget& under, int top, std::initializer_list<QWidget*> strips);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();

    QWidget& m_under;
    int m_top;
};
