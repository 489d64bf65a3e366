// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Measurement.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

bool write(const Signal& signal, bool isComplex, const QString& file)
{
    std::vector<float> values;
    for (const Complex& sample : signal) {
        values.push_back(static_cast<float>(sample.real()));
        if (isComplex)
            values.push_back(static_cast<float>(sample.imag()));
    }
    QFile output(file);
    const qint64 size = static_cast<qint64>(values.size()) * static_cast<qint64>(sizeof(float));
    return output.open(QIODevice::WriteOnly) &&
           output.write(reinterpret_cast<const char*>(values.data()), size) == size;
}

Measurement Measurement::of(const QString& program, const QStringList& files,
                            const QStringList& arguments)
{
    constexpr int timeoutMs = 600000;
    Measurement result;
    QProcess process;
    process.start(program, QStringList{"--measure", "json"} + arguments + files);
    if (!process.waitForFinished(timeoutMs)) {
        result.m_error = process.errorString();
        process.kill();
        process.waitForFinished();
        return result;
    }
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        if (document.isObject())
            result.m_objects.append(document.object());
    }
    const QString said = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    if (process.exitStatus() != QProcess::NormalExit)
        result.m_error = QStringLiteral("crashed: %1").arg(said);
    else if (process.exitCode() != 0 || result.m_objects.size() != files.size())
        result.m_error = QStringLiteral("exit code %1, %2 of %3 files: %4")
                             .arg(process.exitCode())
                             .arg(result.m_objects.size())
                             .arg(files.size())
                             .arg(said);
    return result;
}

QJsonObject Measurement::object(const QString& file) const
{
    for (const QJsonObject& object : m_objects) {
        if (object.value(QLatin1String("input")).toString() == file)
            return object;
    }
    return {};
}

std::optional<double> figure(const QJsonObject& object, const QString& path)
{
    QJsonValue value = object;
    for (const QString& name : path.split(QLatin1Char('.'))) {
        if (name == QLatin1String("#"))
            value = value.isArray() ? QJsonValue(value.toArray().size()) : QJsonValue();
        else if (value.isArray())
            value = value.toArray().at(name.toInt());
        else
            value = value.toObject().value(name);
    }
    if (!value.isDouble())
        return std::nullopt;
    return value.toDouble();
}

QString reason(const QJsonObject& object, const QString& path)
{
    const QJsonObject reasons = object.value(QLatin1String("reasons")).toObject();
    // What a figure is part of may be missing as a whole.
    for (QString name = path; !name.isEmpty(); name.truncate(name.lastIndexOf(QLatin1Char('.')))) {
        if (reasons.contains(name))
            return reasons.value(name).toString();
        if (!name.contains(QLatin1Char('.')))
            break;
    }
    return {};
}
