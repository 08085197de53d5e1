#include "JsonNode.h"

#include <QStringDecoder>

namespace tirlo {

namespace {

constexpr int deepest = 512;

/// Reads a text from its first character on; what fails leaves it at an end it can't go on from.
class JsonReader
{
public:
    explicit JsonReader(QStringView text)
        : m_rest(text)
    {
    }

    std::optional<JsonNode> readAll()
    {
        JsonNode node;
        if (!readNode(node))
            return std::nullopt;
        skipBlanks();
        return m_rest.isEmpty() ? std::optional(node) : std::nullopt;
    }

private:
    bool readNode(JsonNode &node)
    {
        skipBlanks();
        if (m_rest.isEmpty())
            return false;
        switch (m_rest.front().unicode()) {
        case u'{':
            return readObject(node.value.emplace<JsonObject>());
        case u'[':
            return readArray(node.value.emplace<JsonArray>());
        case u'"':
            return readText(node.value.emplace<QString>());
        case u't':
            node.value = true;
            return take(u"true");
        case u'f':
            node.value = false;
            return take(u"false");
        case u'n':
            return take(u"null");
        default:
            return readNumber(node.value.emplace<JsonNumber>());
        }
    }

    bool readObject(JsonObject &object)
    {
        int place = 0;
        return readList(u"{", u"}", [&] {
            QString name;
            skipBlanks();
            if (!readText(name))
                return false;
            skipBlanks();
            JsonNode node{.place = place++};
            if (!take(u":") || !readNode(node))
                return false;
            object.insert(name, node);
            return true;
        });
    }

    bool readArray(JsonArray &array)
    {
        return readList(u"[", u"]", [&] { return readNode(array.emplaceBack()); });
    }

    template<typename ReadElement>
    bool readList(QStringView opening, QStringView closing, ReadElement readElement)
    {
        if (m_depth == deepest || !take(opening))
            return false;
        ++m_depth;
        skipBlanks();
        if (!take(closing)) {
            do {
                if (!readElement())
                    return false;
                skipBlanks();
            } while (take(u","));
            if (!take(closing))
                return false;
        }
        --m_depth;
        return true;
    }

    bool readText(QString &text)
    {
        if (!take(u"\""))
            return false;
        while (!m_rest.isEmpty()) {
            const QChar next = takeFront();
            if (next == u'"')
                return true;
            if (next < u' ')
                return false;
            if (next != u'\\')
                text.append(next);
            else if (!readEscape(text))
                return false;
        }
        return false;
    }

    bool readEscape(QString &text)
    {
        static constexpr QStringView letters = u"\"\\/bfnrt";
        static constexpr QStringView meanings = u"\"\\/\b\f\n\r\t";
        if (m_rest.isEmpty())
            return false;
        const QChar letter = takeFront();
        if (const qsizetype index = letters.indexOf(letter); index >= 0) {
            text.append(meanings[index]);
            return true;
        }
        if (letter != u'u' || m_rest.size() < 4)
            return false;
        char16_t unit = 0;
        for (int i = 0; i < 4; ++i) {
            const int digit = hexDigit(takeFront());
            if (digit < 0)
                return false;
            unit = char16_t(unit * 16 + digit);
        }
        text.append(QChar(unit));
        return true;
    }

    static int hexDigit(QChar character)
    {
        const char16_t unit = character.toLower().unicode();
        if (unit >= u'0' && unit <= u'9')
            return unit - u'0';
        return unit >= u'a' && unit <= u'f' ? unit - u'a' + 10 : -1;
    }

    bool readNumber(JsonNumber &number)
    {
        const QStringView start = m_rest;
        take(u"-");
        if (!take(u"0") && !takeDigits())
            return false;
        if (take(u".") && !takeDigits())
            return false;
        if (take(u"e") || take(u"E")) {
            if (!take(u"+"))
                take(u"-");
            if (!takeDigits())
                return false;
        }
        number.spelling = start.chopped(m_rest.size()).toString();
        return true;
    }

    bool takeDigits()
    {
        const qsizetype before = m_rest.size();
        while (!m_rest.isEmpty() && m_rest.front() >= u'0' && m_rest.front() <= u'9')
            m_rest = m_rest.sliced(1);
        return m_rest.size() < before;
    }

    void skipBlanks()
    {
        while (!m_rest.isEmpty() && QStringView(u" \t\r\n").contains(m_rest.front()))
            m_rest = m_rest.sliced(1);
    }

    bool take(QStringView token)
    {
        if (!m_rest.startsWith(token))
            return false;
        m_rest = m_rest.sliced(token.size());
        return true;
    }

    QChar takeFront()
    {
        const QChar front = m_rest.front();
        m_rest = m_rest.sliced(1);
        return front;
    }

    QStringView m_rest;
    int m_depth = 0;
};

} // namespace

std::optional<JsonNode> readJson(QByteArrayView bytes)
{
    // Stateless, so that half a character at the end counts as the error it is.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return JsonReader(text).readAll();
}

} // namespace tirlo
