#include "GreetCast.h"

#include "core/AppState.h"

namespace tirlo {

GreetCast greetCast(const AppState &state)
{
    GreetCast cast;
    const auto focus = state.focusTask();
    if (focus && focus->isIntegration)
        cast.body = cgColorFromHex(focus->color);
    for (const AgentTask &task : state.tasksBeside(state.focusId))
        cast.minis.push_back(cgColorFromHex(task.color).value_or(BotColor()));
    return cast;
}

} // namespace tirlo
