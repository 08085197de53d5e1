#pragma once

#include <QLatin1String>

#include <array>

namespace tirlo {

/// The names of all effects, in the order of loading.
inline constexpr std::array soundNames{
    QLatin1String("peek"),     QLatin1String("open"),     QLatin1String("close"),
    QLatin1String("hover"),    QLatin1String("blip"),     QLatin1String("slap"),
    QLatin1String("annoyed"),  QLatin1String("dizzy"),    QLatin1String("greet"),
    QLatin1String("work"),     QLatin1String("finish"),   QLatin1String("error"),
    QLatin1String("approval"), QLatin1String("question"), QLatin1String("approve"),
    QLatin1String("gulp"),     QLatin1String("tick"),     QLatin1String("send"),
    QLatin1String("love"),     QLatin1String("pop"),      QLatin1String("proud"),
    QLatin1String("wink"),     QLatin1String("yawn"),     QLatin1String("attach"),
    QLatin1String("think"),    QLatin1String("search"),   QLatin1String("rate"),
    QLatin1String("sleep"),
};

} // namespace tirlo
