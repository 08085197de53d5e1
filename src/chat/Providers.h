#pragma once

#include "core/AppState.h"

#include <QString>

namespace tirlo {

/// The item of the KeychainStore that holds the provider's key.
[[nodiscard]] QString providerKeyItem(ChatProvider provider);

/// The model that is chosen for the provider.
[[nodiscard]] QProperty<QString> &chosenModel(AppState &state, ChatProvider provider);

} // namespace tirlo
