#include "StateColor.h"

namespace tirlo {

QColor stateColor(BotState state)
{
    switch (state) {
    case BotState::working:
        return {0x3B, 0x9E, 0xFF};
    case BotState::thinking:
        return {0xA7, 0x8B, 0xFA};
    case BotState::searching:
        return {0x63, 0x66, 0xF1};
    case BotState::approval:
        return {0xF5, 0xA5, 0x24};
    case BotState::error:
        return {0xF4, 0x50, 0x5E};
    case BotState::finished:
        return {0x34, 0xD3, 0x99};
    case BotState::ratelimit:
        return {0xF5, 0x9E, 0x0B};
    default:
        return {0xFF, 0xFF, 0xFF};
    }
}

} // namespace tirlo
