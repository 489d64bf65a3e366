// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QAbstractSpinBox;

/// Fields that refuse what is typed say so.
namespace refusedInput {

/// Shows that a field's text means nothing, or takes that back.
void mark(QAbstractSpinBox& field, bool isRefused);
/// Says beside a field why it did not take its text.
void say(const QAbstractSpinBox& field, const QString& why);

/// Tells of keys that a field of numbers swallows, as they would lead beyond its range or to no
/// number: all fields of the application, as long as it lives.
class Watch : public QObject
{
    Q_OBJECT
public:
    explicit Watch(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace refusedInput
