#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

/// Reading of JSON objects by key with a type check: a value of the wrong type counts as absent.
namespace tirlo::Json {

[[nodiscard]] inline std::optional<QString> text(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

[[nodiscard]] inline std::optional<QJsonObject> object(const QJsonObject &parent, QLatin1String key)
{
    const QJsonValue value = parent.value(key);
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

/// The integer, exact in 64 bits; nothing for a fraction, a larger number or a boolean.
[[nodiscard]] inline std::optional<qint64> integer(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    const qint64 number = value.toInteger();
    // What is no integer yields whatever default it is given.
    return value.toInteger(~number) == number ? std::optional(number) : std::nullopt;
}

[[nodiscard]] inline std::optional<double> number(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

/// The objects of an array that holds nothing else.
[[nodiscard]] inline std::optional<QList<QJsonObject>> objects(const QJsonValue &value)
{
    if (!value.isArray())
        return std::nullopt;
    QList<QJsonObject> objects;
    const QJsonArray array = value.toArray();
    for (const auto element : array) {
        if (!element.isObject())
            return std::nullopt;
        objects.append(element.toObject());
    }
    return objects;
}

[[nodiscard]] inline std::optional<QList<QJsonObject>> objects(const QJsonObject &parent,
                                                               QLatin1String key)
{
    return objects(parent.value(key));
}

/// The object that the document is, as UTF-8 text.
[[nodiscard]] inline std::optional<QJsonObject> parsedObject(const QByteArray &document)
{
    const QJsonDocument parsed = QJsonDocument::fromJson(document);
    return parsed.isObject() ? std::optional(parsed.object()) : std::nullopt;
}

} // namespace tirlo::Json
