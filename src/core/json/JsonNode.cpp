#include "JsonNode.h"

#include <algorithm>

namespace tirlo {

namespace {

const JsonNode nothing;

} // namespace

std::optional<QString> JsonNode::integerDigits() const
{
    const auto *number = std::get_if<JsonNumber>(&value);
    const auto isFractional = [](QChar c) { return c == u'.' || c == u'e' || c == u'E'; };
    if (!number || std::ranges::any_of(number->spelling, isFractional))
        return std::nullopt;
    return number->spelling;
}

std::optional<qint64> JsonNode::integer() const
{
    bool fits = false;
    const qint64 whole = integerDigits().value_or(QString()).toLongLong(&fits);
    return fits ? std::optional(whole) : std::nullopt;
}

const JsonNode &JsonNode::operator[](const QString &key) const
{
    const JsonNode *found = object() ? member(*object(), key) : nullptr;
    return found ? *found : nothing;
}

const JsonNode &JsonNode::first() const
{
    return array() && !array()->isEmpty() ? array()->first() : nothing;
}

QStringList namesInOrder(const JsonNode &node)
{
    if (!node.object())
        return {};
    const JsonObject &members = *node.object();
    QStringList names = members.keys();
    std::ranges::sort(names, {}, [&members](const QString &name) { return members[name].place; });
    return names;
}

const JsonNode *member(const JsonObject &parent, const QString &key)
{
    const auto found = parent.constFind(key);
    return found == parent.constEnd() ? nullptr : &*found;
}

QString textMember(const JsonObject &parent, const QString &key)
{
    const JsonNode *node = member(parent, key);
    const QString *text = node ? node->text() : nullptr;
    return text ? *text : QString();
}

std::optional<QList<JsonObject>> listOfObjects(const JsonObject &parent, const QString &key)
{
    const JsonNode *node = member(parent, key);
    const JsonArray *array = node ? node->array() : nullptr;
    if (!array)
        return std::nullopt;
    QList<JsonObject> objects;
    for (const JsonNode &element : *array) {
        if (!element.object())
            return std::nullopt;
        objects.append(*element.object());
    }
    return objects;
}

JsonNode arrayOf(const QList<JsonObject> &objects)
{
    JsonArray array;
    for (const JsonObject &object : objects)
        array.append({object});
    return {array};
}

} // namespace tirlo
