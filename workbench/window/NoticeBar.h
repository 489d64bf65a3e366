// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QLabel;

/// A bar with one sentence across the top of the window, and a button that closes it; it does not
/// block the window. Hidden while it is empty.
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
