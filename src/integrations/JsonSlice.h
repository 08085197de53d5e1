#pragma once

#include <QAnyStringView>
#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

namespace tirlo {

/// One value of a JSON document, as it stands in the document's text.
///
/// It keeps what a parsed object loses: the order of the members and the digits of numbers. A value
/// that is not there is a slice of no kind, in which nothing is found either.
class JsonSlice
{
public:
    enum class Kind { none, object, array, string, number, literal };

    JsonSlice() = default;

    /// The whole document, which must outlive all its slices; no value if it isn't valid JSON.
    [[nodiscard]] static JsonSlice of(const QByteArray &document);

    [[nodiscard]] Kind kind() const;
    [[nodiscard]] bool isObject() const { return kind() == Kind::object; }
    [[nodiscard]] bool isArray() const { return kind() == Kind::array; }

    /// The members of an object in the document's order.
    [[nodiscard]] QList<std::pair<QString, JsonSlice>> members() const;
    /// The member of an object; the last one where several have the key.
    [[nodiscard]] JsonSlice operator[](QAnyStringView key) const;
    /// The elements of an array.
    [[nodiscard]] QList<JsonSlice> elements() const;
    /// The first element of an array.
    [[nodiscard]] JsonSlice first() const;

    /// The text that a string holds.
    [[nodiscard]] std::optional<QString> text() const;
    /// The digits of a number that is written as an integer, however large.
    [[nodiscard]] std::optional<QString> integerDigits() const;
    /// The value as the document spells it.
    [[nodiscard]] QString source() const { return QString::fromUtf8(m_text); }

private:
    explicit JsonSlice(QByteArrayView text)
        : m_text(text)
    {
    }

    /// The next value between the brackets, of keys and members by turns in an object; no value
    /// behind the last. `at` starts at 0 and goes along.
    [[nodiscard]] JsonSlice next(qsizetype &at) const;

    QByteArrayView m_text;
};

} // namespace tirlo
