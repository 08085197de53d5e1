#pragma once

#include "BotColor.h"

#include <optional>
#include <vector>

namespace tirlo {

class AppState;

/// Who stands on the resting island once the greeting has folded into it.
struct GreetCast
{
    /// The mascot's flat colour; none means grey and shaded.
    std::optional<BotColor> body;
    /// One for each mini beside the mascot, at most four.
    std::vector<BotColor> minis;

    bool operator==(const GreetCast &) const = default;
};

/// The cast for what the store holds at present.
[[nodiscard]] GreetCast greetCast(const AppState &state);

} // namespace tirlo
