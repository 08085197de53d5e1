#pragma once

#include "RawText.h"

namespace tirlo {

/// The mood of a task and of the mascot.
enum class BotState {
    idle,
    working,
    thinking,
    searching,
    approval,
    question,
    error,
    finished,
    ratelimit,
    sleeping,
    dizzy,
};

template<>
struct RawTexts<BotState>
{
    static constexpr std::array texts{
        QLatin1String("idle"),      QLatin1String("working"),  QLatin1String("thinking"),
        QLatin1String("searching"), QLatin1String("approval"), QLatin1String("question"),
        QLatin1String("error"),     QLatin1String("finished"), QLatin1String("ratelimit"),
        QLatin1String("sleeping"),  QLatin1String("dizzy"),
    };
};

/// A one-shot expression of the mascot.
enum class BotEmote { love, surprised, proud, wink, yawn, happy, annoyed };

template<>
struct RawTexts<BotEmote>
{
    static constexpr std::array texts{
        QLatin1String("love"),    QLatin1String("surprised"), QLatin1String("proud"),
        QLatin1String("wink"),    QLatin1String("yawn"),      QLatin1String("happy"),
        QLatin1String("annoyed"),
    };
};

/// The shape of the mascot's eyes.
enum class EyeShape {
    pill,
    wide,
    dot,
    line,
    flat,
    happy,
    closed,
    spiral,
    heart,
    star,
    tired,
    wink,
    cup,
};

template<>
struct RawTexts<EyeShape>
{
    static constexpr std::array texts{
        QLatin1String("pill"),   QLatin1String("wide"),   QLatin1String("dot"),
        QLatin1String("line"),   QLatin1String("flat"),   QLatin1String("happy"),
        QLatin1String("closed"), QLatin1String("spiral"), QLatin1String("heart"),
        QLatin1String("star"),   QLatin1String("tired"),  QLatin1String("wink"),
        QLatin1String("cup"),
    };
};

} // namespace tirlo
