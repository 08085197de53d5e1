#include "Transcript.h"

#include "core/Json.h"

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

QJsonObject message(ChatRole role, const QJsonValue &content)
{
    const bool isUser = role == ChatRole::user;
    return {{QStringLiteral("role"), isUser ? QStringLiteral("user") : QStringLiteral("assistant")},
            {QStringLiteral("content"), content}};
}

QJsonValue withFile(const Turn &turn)
{
    if (!turn.file || !turn.file->block())
        return turn.content;
    QJsonArray blocks = turn.content.toArray();
    blocks.prepend(*turn.file->block());
    return blocks;
}

} // namespace

QJsonObject messageOf(const Turn &turn)
{
    return message(turn.role, withFile(turn));
}

QJsonObject flatMessageOf(const Turn &turn)
{
    const QJsonValue content = turn.file && turn.file->isText() ? withFile(turn) : turn.content;
    const auto text = Json::objects(content) ? firstText(content) : std::nullopt;
    return message(turn.role, text ? QJsonValue(*text) : content);
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
