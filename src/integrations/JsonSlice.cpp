#include "JsonSlice.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

// The text is known to be valid JSON here, so that finding the end of a value takes no more than
// counting brackets.
namespace tirlo {

namespace {

/// True for white space and for what stands between values.
bool isSeparator(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' || c == ':';
}

qsizetype endOfString(QByteArrayView text, qsizetype start)
{
    qsizetype at = start + 1;
    while (at < text.size() && text[at] != '"')
        at += text[at] == '\\' ? 2 : 1;
    return std::min(at + 1, text.size());
}

qsizetype endOfContainer(QByteArrayView text, qsizetype start)
{
    int depth = 0;
    for (qsizetype at = start; at < text.size();) {
        const char c = text[at];
        if (c == '"') {
            at = endOfString(text, at);
            continue;
        }
        ++at;
        if (c == '{' || c == '[')
            ++depth;
        if ((c == '}' || c == ']') && --depth == 0)
            return at;
    }
    return text.size();
}

qsizetype endOfValue(QByteArrayView text, qsizetype start)
{
    const char first = text[start];
    if (first == '"')
        return endOfString(text, start);
    if (first == '{' || first == '[')
        return endOfContainer(text, start);
    qsizetype at = start;
    while (at < text.size() && !isSeparator(text[at]) && text[at] != '}' && text[at] != ']')
        ++at;
    return at;
}

} // namespace

JsonSlice JsonSlice::of(const QByteArray &document)
{
    if (QJsonDocument::fromJson(document).isNull())
        return {};
    const QByteArrayView text(document);
    // A byte order mark may come first.
    const auto start = std::ranges::find_if(text, [](char c) { return c == '{' || c == '['; });
    const qsizetype first = start - text.begin();
    return JsonSlice(text.sliced(first, endOfContainer(text, first) - first));
}

JsonSlice::Kind JsonSlice::kind() const
{
    if (m_text.isEmpty())
        return Kind::none;
    switch (m_text.front()) {
    case '{':
        return Kind::object;
    case '[':
        return Kind::array;
    case '"':
        return Kind::string;
    case 't':
    case 'f':
    case 'n':
        return Kind::literal;
    default:
        return Kind::number;
    }
}

QList<std::pair<QString, JsonSlice>> JsonSlice::members() const
{
    QList<std::pair<QString, JsonSlice>> members;
    if (!isObject())
        return members;
    qsizetype at = 0;
    for (JsonSlice key = next(at); key.kind() != Kind::none; key = next(at))
        members.append({key.text().value_or(QString()), next(at)});
    return members;
}

JsonSlice JsonSlice::operator[](QAnyStringView key) const
{
    JsonSlice found;
    if (!isObject())
        return found;
    qsizetype at = 0;
    for (JsonSlice name = next(at); name.kind() != Kind::none; name = next(at)) {
        const JsonSlice value = next(at);
        if (QAnyStringView(name.text().value_or(QString())) == key)
            found = value;
    }
    return found;
}

QList<JsonSlice> JsonSlice::elements() const
{
    QList<JsonSlice> elements;
    if (!isArray())
        return elements;
    qsizetype at = 0;
    for (JsonSlice element = next(at); element.kind() != Kind::none; element = next(at))
        elements.append(element);
    return elements;
}

JsonSlice JsonSlice::first() const
{
    qsizetype at = 0;
    return isArray() ? next(at) : JsonSlice();
}

std::optional<QString> JsonSlice::text() const
{
    if (kind() != Kind::string)
        return std::nullopt;
    if (!m_text.contains('\\'))
        return QString::fromUtf8(m_text.sliced(1).chopped(1));
    return QJsonDocument::fromJson('[' + m_text.toByteArray() + ']').array().first().toString();
}

std::optional<QString> JsonSlice::integerDigits() const
{
    const auto isFractional = [](char c) { return c == '.' || c == 'e' || c == 'E'; };
    if (kind() != Kind::number || std::ranges::any_of(m_text, isFractional))
        return std::nullopt;
    return source();
}

JsonSlice JsonSlice::next(qsizetype &at) const
{
    // The first and the last character are the brackets.
    at = std::max<qsizetype>(at, 1);
    while (at < m_text.size() - 1 && isSeparator(m_text[at]))
        ++at;
    if (at >= m_text.size() - 1)
        return {};
    const qsizetype start = std::exchange(at, endOfValue(m_text, at));
    return JsonSlice(m_text.sliced(start, at - start));
}

} // namespace tirlo
