#include "JsonNode.h"

namespace tirlo {

std::optional<qint64> JsonNode::integer() const
{
    const auto *number = std::get_if<JsonNumber>(&value);
    if (!number)
        return std::nullopt;
    bool fits = false;
    const qint64 whole = number->spelling.toLongLong(&fits);
    return fits ? std::optional(whole) : std::nullopt;
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
