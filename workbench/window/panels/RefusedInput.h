// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QAbstractSpinBox;

/// Tells the user when a field refuses a text.
namespace refusedInput {

/// Marks the text of a field as wrong, or as right again.
void mark(QAbstractSpinBox& field, bool isRefused);
/// Shows beside a field why it refused its text.
void say(const QAbstractSpinBox& field, const QString& why);

/// Shows why a number field swallows a key, because it would lead beyond the range or not to a
/// number; for all fields of the application as long as this object lives.
class Watch : public QObject
{
    Q_OBJECT
public:
    explicit Watch(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace refusedInput
