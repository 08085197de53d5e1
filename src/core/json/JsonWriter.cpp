#include "JsonNode.h"

namespace tirlo {

namespace {

constexpr int blanksPerLevel = 2;

class JsonWriter
{
public:
    explicit JsonWriter(JsonSlashes slashes)
        : m_slashes(slashes)
    {
    }

    [[nodiscard]] QByteArray text() const { return m_text.toUtf8(); }

    void write(const JsonNode &node)
    {
        std::visit([this](const auto &value) { writeValue(value); }, node.value);
    }

private:
    void writeValue(std::nullptr_t) { m_text += u"null"; }
    void writeValue(bool value) { m_text += value ? u"true" : u"false"; }
    void writeValue(const JsonNumber &number) { m_text += number.spelling; }

    void writeValue(const JsonArray &array)
    {
        writeList(u'[', u']', array, [this](auto element) { write(*element); });
    }

    void writeValue(const JsonObject &object)
    {
        writeList(u'{', u'}', object, [this](auto entry) {
            writeValue(entry.key());
            m_text += u": ";
            write(entry.value());
        });
    }

    void writeValue(const QString &text)
    {
        m_text += u'"';
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (i + 1 < text.size() && text[i].isHighSurrogate() && text[i + 1].isLowSurrogate()) {
                m_text += text[i];
                m_text += text[++i];
            } else {
                writeUnit(text[i]);
            }
        }
        m_text += u'"';
    }

    void writeUnit(QChar unit)
    {
        static constexpr QStringView named = u"\b\f\n\r\t";
        static constexpr QStringView letters = u"bfnrt";
        if (unit == u'"' || unit == u'\\' || (unit == u'/' && m_slashes == JsonSlashes::escaped))
            m_text.append(u'\\').append(unit);
        else if (const qsizetype index = named.indexOf(unit); index >= 0)
            m_text.append(u'\\').append(letters[index]);
        else if (unit < u' ' || unit.isSurrogate()) // half a pair has no place in UTF-8
            m_text += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
        else
            m_text += unit;
    }

    template<typename Container, typename WriteElement>
    void writeList(QChar opening, QChar closing, const Container &elements,
                   WriteElement writeElement)
    {
        m_text += opening;
        ++m_level;
        for (auto element = elements.begin(); element != elements.end(); ++element) {
            if (element != elements.begin())
                m_text += u',';
            startLine();
            writeElement(element);
        }
        --m_level;
        if (!elements.isEmpty())
            startLine();
        m_text += closing;
    }

    void startLine()
    {
        m_text += u'\n';
        m_text.resize(m_text.size() + m_level * blanksPerLevel, u' ');
    }

    const JsonSlashes m_slashes;
    QString m_text;
    int m_level = 0;
};

} // namespace

QByteArray writeJson(const JsonNode &node, JsonSlashes slashes)
{
    JsonWriter writer(slashes);
    writer.write(node);
    return writer.text();
}

} // namespace tirlo
