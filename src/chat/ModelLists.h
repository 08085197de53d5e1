#pragma once

#include "core/model/Chat.h"
#include "platform/HttpClient.h"

#include <QList>

/// The chat models in a provider's answer, in the order to show them; none if it is no such list.
namespace tirlo::ModelLists {

/// The models to choose from before Anthropic's own list has come.
[[nodiscard]] QList<ProviderModel> builtInAnthropicModels();

[[nodiscard]] QList<ProviderModel> anthropicModels(const HttpReply &reply);
[[nodiscard]] QList<ProviderModel> googleModels(const HttpReply &reply);
/// The newest come first.
[[nodiscard]] QList<ProviderModel> openAIModels(const HttpReply &reply);

} // namespace tirlo::ModelLists
