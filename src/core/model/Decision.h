#pragma once

#include "RawText.h"

namespace tirlo {

/// What becomes of a permission request; `ask` hands it back to the agent.
enum class Decision { allow, always, deny, ask };

template<>
struct RawTexts<Decision>
{
    static constexpr std::array texts{
        QLatin1String("allow"),
        QLatin1String("always"),
        QLatin1String("deny"),
        QLatin1String("ask"),
    };
};

} // namespace tirlo
