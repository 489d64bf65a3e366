// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/Measurement.h"

#include <QJsonArray>

#include <cmath>
#include <initializer_list>

namespace {

QJsonValue number(const Measurement::Figure& figure)
{
    return figure && std::isfinite(*figure) ? QJsonValue(*figure) : QJsonValue();
}

QJsonObject object(std::initializer_list<std::pair<const char*, Measurement::Figure>> figures)
{
    QJsonObject result;
    for (const auto& [name, figure] : figures)
        result.insert(QLatin1String(name), number(figure));
    return result;
}

QJsonObject eyeOf(const Measurement::Eye& eye)
{
    QJsonArray levels;
    for (const Measurement::Level& level : eye.levels)
        levels += object({{"mean", level.mean}, {"sigma", level.sigma}});
    QJsonArray eyes;
    for (const Measurement::EyeOpening& opening : eye.eyes)
        eyes += object({{"height", opening.height},
                        {"opening", opening.opening},
                        {"width", opening.width},
                        {"crossing", opening.crossing},
                        {"jitter_rms", opening.jitterRms},
                        {"jitter_pp", opening.jitterPeak},
                        {"q", opening.q}});
    return {{QStringLiteral("traces"), static_cast<double>(eye.traces)},
            {QStringLiteral("instant"), number(eye.instant)},
            {QStringLiteral("levels"), levels},
            {QStringLiteral("eyes"), eyes}};
}

/// Gives each figure that is null the reason of its part.
void explain(const QJsonValue& value, const QString& path, const QMap<QString, QString>& reasons,
             QJsonObject& why)
{
    const auto below = [&path](const QString& name) {
        return path.isEmpty() ? name : path + QLatin1Char('.') + name;
    };
    if (value.isObject()) {
        const QJsonObject members = value.toObject();
        for (auto member = members.begin(); member != members.end(); ++member)
            explain(member.value(), below(member.key()), reasons, why);
    } else if (value.isArray()) {
        int index = 0;
        for (const auto& member : value.toArray())
            explain(member, below(QString::number(index++)), reasons, why);
    } else if (value.isNull()) {
        for (QString part = path; !part.isEmpty();
             part.truncate(part.lastIndexOf(QLatin1Char('.')))) {
            if (const QString reason = reasons.value(part); !reason.isEmpty()) {
                why.insert(path, reason);
                return;
            }
            if (!part.contains(QLatin1Char('.')))
                return;
        }
    }
}

} // namespace

QJsonObject Measurement::json() const
{
    static const char* const origins[] = {"given", "metadata", "estimated"};
    QJsonObject rate = object({{"value", symbolRate.value},
                               {"deviation", symbolRate.deviation},
                               {"confidence", symbolRate.confidence}});
    rate.insert(QStringLiteral("origin"),
                symbolRate.value
                    ? QJsonValue(QLatin1String(origins[static_cast<int>(symbolRate.origin)]))
                    : QJsonValue());
    QJsonObject points = object({{"evm_rms", constellation.evmRms},
                                 {"evm_peak", constellation.evmPeak},
                                 {"mer_db", constellation.mer},
                                 {"offset_db", constellation.offset},
                                 {"imbalance_db", constellation.imbalance},
                                 {"quadrature_deg", constellation.quadrature}});
    points.insert(QStringLiteral("modulation"), constellation.modulation.isEmpty()
                                                    ? QJsonValue()
                                                    : QJsonValue(constellation.modulation));
    points.insert(QStringLiteral("symbols"), static_cast<double>(constellation.symbols));
    QJsonArray stageList;
    for (const Stage& stage : stages)
        stageList += QJsonObject{{QStringLiteral("name"), stage.name},
                                 {QStringLiteral("state"), stage.state}};
    QJsonObject result{
        {QStringLiteral("schema"), QStringLiteral("orvane.measure/1")},
        {QStringLiteral("start"), start},
        {QStringLiteral("stop"), stop},
        {QStringLiteral("sample_rate"), sampleRate},
        {QStringLiteral("symbol_rate"), rate},
        {QStringLiteral("time"), object({{"mean", time.mean},
                                         {"minimum", time.minimum},
                                         {"maximum", time.maximum},
                                         {"peak_to_peak", time.peakToPeak},
                                         {"rms", time.rms},
                                         {"rms_ac", time.rmsAc},
                                         {"frequency", time.frequency}})},
        {QStringLiteral("eye"), eyeOf(eye)},
        {QStringLiteral("constellation"), points},
        {QStringLiteral("carrier"),
         object({{"offset", carrier.offset}, {"deviation", carrier.deviation}})},
        {QStringLiteral("clock"),
         object({{"offset_ppm", clock.offset}, {"deviation_ppm", clock.deviation}})},
        {QStringLiteral("frequency_modulation"), object({{"deviation", frequency.deviation},
                                                         {"index", frequency.index},
                                                         {"frequency_error", frequency.error}})},
        {QStringLiteral("stages"), stageList},
        {QStringLiteral("left_out"),
         QJsonObject{{QStringLiteral("samples"), static_cast<double>(leftOut.samples)},
                     {QStringLiteral("symbols"), static_cast<double>(leftOut.symbols)},
                     {QStringLiteral("reason"),
                      leftOut.reason.isEmpty() ? QJsonValue() : QJsonValue(leftOut.reason)}}},
        {QStringLiteral("notes"), QJsonArray::fromStringList(notes)}};
    QJsonObject why;
    explain(result, QString(), reasons, why);
    result.insert(QStringLiteral("reasons"), why);
    return result;
}
