#pragma once

#include "RawText.h"

namespace tirlo {

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
        QLatin1String("overview"),  QLatin1String("empty"),    QLatin1String("approval"),
        QLatin1String("question"),  QLatin1String("error"),    QLatin1String("finished"),
        QLatin1String("confused"),  QLatin1String("upload"),   QLatin1String("uploading"),
        QLatin1String("choose"),    QLatin1String("mail"),     QLatin1String("prompt"),
        QLatin1String("searching"), QLatin1String("result"),   QLatin1String("note"),
        QLatin1String("settings"),  QLatin1String("greeting"),
    };
};

/// Whether the card waits for the user, however long that takes.
[[nodiscard]] constexpr bool asksTheUser(IslandView card)
{
    return card == IslandView::approval || card == IslandView::question;
}

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

} // namespace tirlo
