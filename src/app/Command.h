#pragma once

#include "core/model/RawText.h"

namespace tirlo {

/// What another start of the program asks of the one that runs; each is an option of that name.
enum class Command { open, settings, quit };

template<>
struct RawTexts<Command>
{
    static constexpr std::array texts{
        QLatin1String("open"),
        QLatin1String("settings"),
        QLatin1String("quit"),
    };
};

} // namespace tirlo
