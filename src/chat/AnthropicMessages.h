#pragma once

#include "ChatWire.h"
#include "Transcript.h"
#include "platform/HttpClient.h"

/// How Anthropic's models are asked, with web search, and what their answers mean.
namespace tirlo::AnthropicMessages {

/// The version of the interface that is spoken.
constexpr char version[] = "2023-06-01";

/// The content of the user's turn; what he asks about comes first.
[[nodiscard]] QJsonArray blocks(const QString &query, const std::optional<PromptContext> &context);

/// The request that carries all turns; may have to read their files.
[[nodiscard]] HttpRequest request(const QUrl &host, const QString &key, const QString &model,
                                  const QList<Turn> &turns);

/// What the reply means; `storedModel` is the user's choice as it stands in the settings.
[[nodiscard]] ChatOutcome outcome(const HttpReply &reply, const QString &storedModel);

} // namespace tirlo::AnthropicMessages
