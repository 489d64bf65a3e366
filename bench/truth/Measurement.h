// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Case.h"

#include <QJsonObject>

#include <optional>

/// Writes samples as interleaved (complex) or single (real) 32-bit floating point numbers.
/// @return false where the file cannot be written.
bool write(const Signal& signal, bool isComplex, const QString& file);

/// What a program says to --measure json of some files.
class Measurement
{
public:
    /// Runs the program, and waits until it ends. An empty error where every file was measured.
    static Measurement of(const QString& program, const QStringList& files,
                          const QStringList& arguments);

    const QString& error() const { return m_error; }
    /// Of a file that was measured; else empty.
    QJsonObject object(const QString& file) const;

private:
    QList<QJsonObject> m_objects;
    QString m_error;
};

/// A number in an object by its path: names and positions between dots, # for an array's length.
std::optional<double> figure(const QJsonObject& object, const QString& path);
/// Why it is null; empty where nothing is said.
QString reason(const QJsonObject& object, const QString& path);
