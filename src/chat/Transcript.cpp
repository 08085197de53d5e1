#include "Transcript.h"

#include "core/Json.h"

#include <algorithm>
#include <utility>

namespace tirlo {

QJsonObject messageOf(const Turn &turn)
{
    QJsonValue content = turn.content;
    if (turn.file && turn.file->block()) {
        QJsonArray blocks = content.toArray();
        blocks.prepend(*turn.file->block());
        content = blocks;
    }
    const bool isUser = turn.role == ChatRole::user;
    return {{QStringLiteral("role"), isUser ? QStringLiteral("user") : QStringLiteral("assistant")},
            {QStringLiteral("content"), content}};
}

QJsonObject textBlock(const QString &text)
{
    return {{QStringLiteral("type"), QStringLiteral("text")}, {QStringLiteral("text"), text}};
}

std::optional<QString> firstText(const QJsonValue &content)
{
    const QString text = QStringLiteral("text");
    const QJsonArray blocks = content.toArray();
    const auto first = std::ranges::find_if(
        blocks, [&](const QJsonValue &block) { return block[u"type"] == text; });
    return first == blocks.end() ? std::nullopt
                                 : Json::text((*first).toObject(), QLatin1String("text"));
}

bool isArrayOfObjects(const QJsonValue &value)
{
    const QJsonArray elements = value.toArray();
    return value.isArray() && std::ranges::all_of(elements, [](const QJsonValue &element) {
               return element.isObject();
           });
}

quint64 Transcript::append(ChatRole role, const QJsonValue &content,
                           std::shared_ptr<AttachedFile> file)
{
    m_turns.append({++m_lastId, role, content, std::move(file)});
    return m_lastId;
}

void Transcript::remove(quint64 id)
{
    m_turns.removeIf([id](const Turn &turn) { return turn.id == id; });
}

} // namespace tirlo
