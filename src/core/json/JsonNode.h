#pragma once

#include <QByteArrayView>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace tirlo {

struct JsonNode;

/// The members of an object, sorted by their names.
using JsonObject = QMap<QString, JsonNode>;
/// The elements of an array.
using JsonArray = QList<JsonNode>;

/// A number as it was spelled, so that one of any size or precision comes out as it went in.
struct JsonNumber
{
    QString spelling;

    bool operator==(const JsonNumber &) const = default;
};

/// A value of a text that belongs to another program: nothing in it is lost or rounded.
struct JsonNode
{
    std::variant<std::nullptr_t, bool, JsonNumber, QString, JsonArray, JsonObject> value = nullptr;
    /// Where it stood among the members of its object, the first at 0; it tells no two apart.
    int place = 0;

    bool operator==(const JsonNode &other) const { return value == other.value; }

    /// The members if this is an object, else null.
    [[nodiscard]] const JsonObject *object() const { return std::get_if<JsonObject>(&value); }
    /// The elements if this is an array, else null.
    [[nodiscard]] const JsonArray *array() const { return std::get_if<JsonArray>(&value); }
    /// The text if this is a string, else null.
    [[nodiscard]] const QString *text() const { return std::get_if<QString>(&value); }
    /// The digits of a number without fraction or exponent, however large; else none.
    [[nodiscard]] std::optional<QString> integerDigits() const;
    /// The number if this is one without fraction or exponent that fits, else none.
    [[nodiscard]] std::optional<qint64> integer() const;

    /// The member of that name; a null value when this is no object or has none.
    [[nodiscard]] const JsonNode &operator[](const QString &key) const;
    /// The first element; a null value when this is no array or an empty one.
    [[nodiscard]] const JsonNode &first() const;
};

/// The names of the members in the order of the text; none for anything but an object.
[[nodiscard]] QStringList namesInOrder(const JsonNode &node);

/// The elements if there is such a member and it is an array of nothing but objects, else none.
[[nodiscard]] std::optional<QList<JsonObject>> listOfObjects(const JsonObject &parent,
                                                             const QString &key);

/// An array of these objects.
[[nodiscard]] JsonNode arrayOf(const QList<JsonObject> &objects);

/// The member of that name; null when there is none.
[[nodiscard]] const JsonNode *member(const JsonObject &parent, const QString &key);

/// The text of that member; "" when there is none or it is no string.
[[nodiscard]] QString textMember(const JsonObject &parent, const QString &key);

/// Reads one JSON text in UTF-8; none if it is anything but that, or nested deeper than 512.
[[nodiscard]] std::optional<JsonNode> readJson(QByteArrayView bytes);

/// How slashes in texts come out.
enum class JsonSlashes { escaped, plain };

/// The value as JSON text in UTF-8: names sorted, two blanks a level, no line feed at the end.
[[nodiscard]] QByteArray writeJson(const JsonNode &node, JsonSlashes slashes);

} // namespace tirlo
