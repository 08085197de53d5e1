#include "KeyValueStore.h"

#include <cmath>

namespace tirlo {

namespace {

template<typename T>
std::optional<T> as(const std::optional<StoredValue> &stored)
{
    const T *held = stored ? std::get_if<T>(&*stored) : nullptr;
    return held ? std::optional<T>(*held) : std::nullopt;
}

} // namespace

std::optional<bool> KeyValueStore::boolean(const QString &key) const
{
    return as<bool>(value(key));
}

std::optional<double> KeyValueStore::real(const QString &key) const
{
    const auto stored = value(key);
    if (const auto whole = as<std::int64_t>(stored))
        return double(*whole);
    return as<double>(stored);
}

std::optional<std::int64_t> KeyValueStore::integer(const QString &key) const
{
    const auto stored = value(key);
    if (const auto whole = as<std::int64_t>(stored))
        return whole;

    const auto number = as<double>(stored);
    // Within ±2^53 a whole double names exactly one integer.
    constexpr double exactLimit = 9007199254740992.0;
    if (!number || std::trunc(*number) != *number || std::abs(*number) > exactLimit)
        return std::nullopt;
    return std::int64_t(*number);
}

std::optional<QString> KeyValueStore::text(const QString &key) const
{
    return as<QString>(value(key));
}

std::optional<QByteArray> KeyValueStore::bytes(const QString &key) const
{
    return as<QByteArray>(value(key));
}

} // namespace tirlo
