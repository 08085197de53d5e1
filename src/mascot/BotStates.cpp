#include "BotStates.h"

#include <array>

namespace tirlo::BotStates {

namespace {

using Kind = BadgeType::Kind;

/// A row whose badge takes the state's own colour.
BotStateCfg makeRow(BotColor color, double tint, EyeShape eye, std::optional<Kind> badge)
{
    BotStateCfg row;
    row.color = color;
    row.tint = tint;
    row.eye = eye;
    if (badge)
        row.badge = BadgeType{*badge, color};
    return row;
}

using Table = std::array<BotStateCfg, RawTexts<BotState>::texts.size()>;

Table makeTable()
{
    using enum EyeShape;
    Table table{
        // idle, working, thinking, searching
        makeRow({0.902, 0.914, 0.933}, 0, pill, {}),
        makeRow({0.231, 0.62, 1.0}, 0.72, pill, Kind::dots),
        makeRow({0.545, 0.361, 0.965}, 0.72, pill, Kind::dots),
        makeRow({0.388, 0.396, 0.949}, 0.72, pill, Kind::dots),
        // approval, question, error, finished
        makeRow({0.961, 0.647, 0.141}, 0.78, wide, Kind::bang),
        makeRow({0.133, 0.827, 0.933}, 0.75, pill, Kind::question),
        makeRow({0.957, 0.314, 0.369}, 0.78, flat, Kind::dot),
        makeRow({0.204, 0.831, 0.6}, 0.35, happy, Kind::dot),
        // ratelimit, sleeping, dizzy
        makeRow({0.984, 0.573, 0.235}, 0.72, tired, Kind::dot),
        makeRow({0.58, 0.635, 0.722}, 0.32, closed, {}),
        makeRow({0.957, 0.447, 0.714}, 0.7, spiral, {}),
    };

    const auto at = [&table](BotState state) -> BotStateCfg & { return table[std::size_t(state)]; };
    at(BotState::thinking).look = QPointF(0.55, 0.55);
    at(BotState::searching).scans = true;
    at(BotState::approval).bounces = true;
    at(BotState::question).tilt = 0.17;
    at(BotState::ratelimit).sweat = true;
    at(BotState::sleeping).breathes = true;
    at(BotState::sleeping).zz = true;
    return table;
}

} // namespace

const BotStateCfg &row(BotState state)
{
    static const Table table = makeTable();
    return table.at(std::size_t(state));
}

} // namespace tirlo::BotStates
