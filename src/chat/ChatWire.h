#pragma once

#include "core/model/Chat.h"

#include <QJsonValue>
#include <QString>

#include <optional>

/// What the ways to speak with the providers have in common.
namespace tirlo {

/// Tokens that an answer may take.
constexpr int maxTokens = 4096;

/// Tells the model who it is.
[[nodiscard]] QString systemPrompt();

/// Says in words which window or file the user asks about.
[[nodiscard]] QString contextText(const PromptContext &context);

/// What came of one turn of the user's.
struct ChatOutcome
{
    /// The content of the assistant's turn, where one goes into the transcript.
    std::optional<QJsonValue> turn = {};
    /// The answer to show; nothing if there is an error to show instead.
    std::optional<QString> text = {};
    QString error = {};
    /// The user's turn is taken back, as if it had never been.
    bool withdrawsTurn = false;
};

} // namespace tirlo
