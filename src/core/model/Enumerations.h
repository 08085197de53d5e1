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
        QLatin1String("idle"),     QLatin1String("working"),   QLatin1String("thinking"),
        QLatin1String("searching"), QLatin1String("approval"),  QLatin1String("question"),
        QLatin1String("error"),    QLatin1String("finished"),  QLatin1String("ratelimit"),
        QLatin1String("sleeping"), QLatin1String("dizzy"),
    };
};

/// A one-shot expression of the mascot.
enum class BotEmote { love, surprised, proud, wink, yawn, happy, annoyed };

template<>
struct RawTexts<BotEmote>
{
    static constexpr std::array texts{
        QLatin1String("love"), QLatin1String("surprised"), QLatin1String("proud"),
        QLatin1String("wink"), QLatin1String("yawn"),      QLatin1String("happy"),
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
        QLatin1String("pill"),  QLatin1String("wide"),   QLatin1String("dot"),
        QLatin1String("line"),  QLatin1String("flat"),   QLatin1String("happy"),
        QLatin1String("closed"), QLatin1String("spiral"), QLatin1String("heart"),
        QLatin1String("star"),  QLatin1String("tired"),  QLatin1String("wink"),
        QLatin1String("cup"),
    };
};

/// Which card the island shows.
enum class IslandView {
    overview,
    empty,
    approval,
    question,
    error,
    finished,
    confused,
    upload,
    uploading,
    choose,
    mail,
    prompt,
    searching,
    result,
    note,
    settings,
    greeting,
};

template<>
struct RawTexts<IslandView>
{
    static constexpr std::array texts{
        QLatin1String("overview"), QLatin1String("empty"),     QLatin1String("approval"),
        QLatin1String("question"), QLatin1String("error"),     QLatin1String("finished"),
        QLatin1String("confused"), QLatin1String("upload"),    QLatin1String("uploading"),
        QLatin1String("choose"),   QLatin1String("mail"),      QLatin1String("prompt"),
        QLatin1String("searching"), QLatin1String("result"),    QLatin1String("note"),
        QLatin1String("settings"), QLatin1String("greeting"),
    };
};

/// How far the island is open; a later case is more open than an earlier one.
enum class IslandMode { hidden, compact, expanded };

template<>
struct RawTexts<IslandMode>
{
    static constexpr std::array texts{
        QLatin1String("hidden"),
        QLatin1String("compact"),
        QLatin1String("expanded"),
    };
};

/// How the agent pills are laid out in a view.
enum class AgentLayoutMode { none, grid, pills, column };

/// Where a task comes from.
enum class AgentSource { claudeCode, n8n, agent };

/// The small mark on a pill that is not in focus.
enum class PillBadge { approval, finished, error };

/// The chat's backend.
enum class ChatProvider { anthropic, google, openai };

template<>
struct RawTexts<ChatProvider>
{
    static constexpr std::array texts{
        QLatin1String("anthropic"),
        QLatin1String("google"),
        QLatin1String("openai"),
    };
};

/// The author of a chat message.
enum class ChatRole { user, assistant };

/// The group of a catalogue row in the settings.
enum class PillCategory { workspace, agent, ai, service };

template<>
struct RawTexts<PillCategory>
{
    static constexpr std::array texts{
        QLatin1String("workspace"),
        QLatin1String("agent"),
        QLatin1String("ai"),
        QLatin1String("service"),
    };
};

} // namespace tirlo
