// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Mask.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace density {

namespace {

constexpr const char* schema = "orvane.mask/1";
// Numbers of JSON are exact up to here.
constexpr double mostWhole = 9007199254740992.0;

QString text(const char* source) { return QCoreApplication::translate("density::Mask", source); }

/// Reads members of a mask, up to the first fault.
class Reader
{
public:
    bool isGood() const { return m_error.isEmpty(); }
    const QString& error() const { return m_error; }
    void fail(const QString& error)
    {
        if (isGood())
            m_error = error;
    }
    double number(const QJsonObject& object, const char* key, double standard)
    {
        const QJsonValue value = object.value(QLatin1String(key));
        if (!value.isUndefined() && !value.isDouble())
            fail(text(QT_TRANSLATE_NOOP("density::Mask", "\"%1\" is not a number.")).arg(key));
        return value.toDouble(standard);
    }
    std::int64_t whole(const QJsonObject& object, const char* key, std::int64_t standard)
    {
        const double value = number(object, key, static_cast<double>(standard));
        if (!(value >= 0.0 && value <= mostWhole && value == std::floor(value))) {
            fail(
                text(QT_TRANSLATE_NOOP("density::Mask", "\"%1\" is not a whole number.")).arg(key));
            return standard;
        }
        return static_cast<std::int64_t>(value);
    }
    /// 0 or 1, for the first or the second word, the first where there is none.
    int word(const QJsonObject& object, const char* key, const char* first, const char* second)
    {
        const QString value = object.value(QLatin1String(key)).toString(QString::fromLatin1(first));
        const bool isSecond = value == QLatin1String(second);
        if (!isSecond && value != QLatin1String(first))
            fail(text(QT_TRANSLATE_NOOP("density::Mask", "\"%1\" is neither \"%2\" nor \"%3\"."))
                     .arg(key, first, second));
        return isSecond ? 1 : 0;
    }
    QPolygonF polygon(const QJsonArray& points)
    {
        QPolygonF polygon;
        for (const QJsonValue& value : points) {
            const QJsonArray point = value.toArray();
            if (point.size() != 2 || !point[0].isDouble() || !point[1].isDouble())
                fail(text(QT_TRANSLATE_NOOP("density::Mask",
                                            "A point of a polygon is not a pair of numbers.")));
            polygon << QPointF(point[0].toDouble(), point[1].toDouble());
        }
        return polygon;
    }

private:
    QString m_error;
};

} // namespace

QByteArray Mask::toJson() const
{
    QJsonArray all;
    for (const QPolygonF& polygon : polygons) {
        QJsonArray points;
        for (const QPointF& point : polygon)
            points.append(QJsonArray{point.x(), point.y()});
        all.append(points);
    }
    QJsonObject object{
        {"schema", schema},
        {"name", name},
        {"levels", levels == Levels::Relative ? "relative" : "absolute"},
        {"origin", origin == Origin::Middle ? "middle" : "crossing"},
        {"margin", margin},
        {"limit", QJsonObject{{"hits", static_cast<double>(mostHits)},
                              {"symbols", static_cast<double>(symbolCount)}}},
        {"polygons", all},
    };
    if (!source.isEmpty())
        object.insert("source", source);
    return QJsonDocument(object).toJson();
}

std::optional<Mask> Mask::fromJson(const QByteArray& json, QString* error)
{
    Reader reader;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (!document.isObject())
        reader.fail(text(QT_TRANSLATE_NOOP("density::Mask", "No JSON object, at byte %1: %2."))
                        .arg(parseError.offset)
                        .arg(parseError.errorString()));
    const QJsonObject object = document.object();
    if (object.value("schema").toString() != QLatin1String(schema))
        reader.fail(
            text(QT_TRANSLATE_NOOP("density::Mask", "\"schema\" is not \"%1\".")).arg(schema));
    Mask mask;
    mask.name = object.value("name").toString();
    mask.source = object.value("source").toString();
    mask.levels = reader.word(object, "levels", "relative", "absolute") == 0 ? Levels::Relative
                                                                             : Levels::Absolute;
    mask.origin = reader.word(object, "origin", "middle", "crossing") == 0 ? Origin::Middle
                                                                           : Origin::Crossing;
    mask.margin = reader.number(object, "margin", 0.0);
    const QJsonObject limit = object.value("limit").toObject();
    mask.mostHits = reader.whole(limit, "hits", mask.mostHits);
    mask.symbolCount = reader.whole(limit, "symbols", mask.symbolCount);
    const QJsonArray all = object.value("polygons").toArray();
    for (int k = 0; k < all.size() && k <= mostPolygons; ++k)
        mask.polygons.push_back(reader.polygon(all[k].toArray()));
    if (!mask.isUsable())
        reader.fail(text(QT_TRANSLATE_NOOP("density::Mask",
                                           "\"polygons\" has to hold 1 to %1 polygons of 3 to %2 "
                                           "points with numbers up to a million, and \"limit\" at "
                                           "least one symbol."))
                        .arg(mostPolygons)
                        .arg(mostPoints));
    if (error)
        *error = reader.error();
    return reader.isGood() ? std::optional<Mask>(mask) : std::nullopt;
}

} // namespace density
