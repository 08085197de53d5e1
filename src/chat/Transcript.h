#pragma once

#include "FileBlock.h"
#include "core/model/ChatProvider.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>

#include <memory>
#include <optional>

namespace tirlo {

/// One entry of a conversation, as a provider wants it.
struct Turn
{
    quint64 id = 0;
    ChatRole role = ChatRole::user;
    /// An array of blocks, or a text.
    QJsonValue content;
    /// Its block, where it has one, goes before the others.
    std::shared_ptr<AttachedFile> file;
};

/// The turn as a message with its role and all of its content; may have to read the turn's file.
[[nodiscard]] QJsonObject messageOf(const Turn &turn);

/// The turn as a message with its first text in place of its blocks; reads the file only for text.
[[nodiscard]] QJsonObject flatMessageOf(const Turn &turn);

/// The text of the first text block among the content; nothing if there is none, or it has no text.
[[nodiscard]] std::optional<QString> firstText(const QJsonValue &content);

/// The whole conversation with whichever providers, for as long as the program runs.
class Transcript
{
public:
    [[nodiscard]] bool isEmpty() const { return m_turns.isEmpty(); }

    /// Adds a turn at the end and returns its id.
    quint64 append(ChatRole role, const QJsonValue &content,
                   std::shared_ptr<AttachedFile> file = {});
    /// Takes one turn back.
    void remove(quint64 id);

    /// All turns as they stand.
    [[nodiscard]] QList<Turn> turns() const { return m_turns; }

private:
    QList<Turn> m_turns;
    quint64 m_lastId = 0;
};

} // namespace tirlo
