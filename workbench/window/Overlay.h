// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <initializer_list>

/// Strips that lie over the top of other widgets, one below the other, with an edge around each:
/// what is below keeps its place. As high as the strips that are shown.
class Overlay : public QWidget
{
    Q_OBJECT
public:
    /// @param under   a sibling to be, of the same parent.
    /// @param top     room that is left to it at its top, pixels.
    /// @param strips  from the top; become children.
    Overlay(QWidget& under, int top, std::initializer_list<QWidget*> strips);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();

    QWidget& m_under;
    int m_top;
};
