// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QLabel;

/// One sentence across the top of the window, with a button that closes it; it stops nobody from
/// working on. Hidden while it says nothing.
class NoticeBar : public QFrame
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent);

    void say(const QString& sentence);
    QString text() const;

private:
    QLabel* m_text;
};
