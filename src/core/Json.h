#pragma once

#include <QJsonObject>
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

} // namespace tirlo::Json
