#pragma once

#include "ChatWire.h"
#include "Transcript.h"
#include "platform/HttpClient.h"

/// How models are asked over OpenAI's interface, which Google speaks too, and what they answer.
namespace tirlo::ChatCompletions {

/// What the user asks, in one text with what he asks about; of a file it knows the name alone.
[[nodiscard]] QString turnText(const QString &query, const std::optional<PromptContext> &context);

/// The request that carries all turns, each as one text; may have to read their files.
[[nodiscard]] HttpRequest request(const QUrl &endpoint, const QString &key, const QString &model,
                                  const QList<Turn> &turns);

/// What the reply means.
[[nodiscard]] ChatOutcome outcome(const HttpReply &reply);

} // namespace tirlo::ChatCompletions
