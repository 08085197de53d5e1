#include "GreetCast.h"

#include "core/AppState.h"

namespace tirlo {

namespace {

constexpr std::size_t maximumMinis = 4;

} // namespace

GreetCast greetCast(const AppState &state)
{
    GreetCast cast;
    const auto focus = state.focusTask();
    if (focus && focus->isIntegration)
        cast.body = cgColorFromHex(focus->color);
    for (const AgentTask &task : state.tasks.value()) {
        if (task.id != state.focusId.value() && cast.minis.size() < maximumMinis)
            cast.minis.push_back(cgColorFromHex(task.color).value_or(BotColor()));
    }
    return cast;
}

} // namespace tirlo
