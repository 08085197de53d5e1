#include "IslandConst.h"

#include "model/RawText.h"

#include <array>
#include <optional>

namespace tirlo::IslandConst {

namespace {

struct Row
{
    IslandView view;
    ViewLayout layout;
};

using enum AgentLayoutMode;
using View = IslandView;

// Height; mascot's centre x, y, diameter; layout of the agents.
constexpr std::array rows{
    Row{View::overview, {160, 68, std::nullopt, 58, pills}},
    Row{View::empty, {160, 70, std::nullopt, 62, none}},
    Row{View::approval, {160, 62, std::nullopt, 56, column}},
    Row{View::question, {160, 62, std::nullopt, 56, column}},
    Row{View::error, {160, 62, std::nullopt, 58, column}},
    Row{View::finished, {160, 62, std::nullopt, 58, column}},
    Row{View::confused, {160, 76, std::nullopt, 66, column}},
    Row{View::upload, {176, 140, 104, 62, column}},
    Row{View::uploading, {176, 46, 118, 20, none}},
    Row{View::choose, {176, 60, 101, 52, column}},
    Row{View::mail, {240, 56, std::nullopt, 46, column}},
    Row{View::prompt, {160, 52, std::nullopt, 44, column}},
    Row{View::searching, {160, 52, std::nullopt, 44, column}},
    Row{View::result, {160, 52, std::nullopt, 44, column}},
    Row{View::note, {160, 60, std::nullopt, 50, column}},
    Row{View::settings, {160, 54, std::nullopt, 46, none}},
    Row{View::greeting, {150, 320, 90, 0, none}},
};

constexpr bool inOrderOfTheViews()
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].view != IslandView(int(i)))
            return false;
    }
    return rows.size() == RawTexts<IslandView>::texts.size();
}
static_assert(inOrderOfTheViews());

} // namespace

const ViewLayout &viewLayout(IslandView view)
{
    return rows.at(std::size_t(view)).layout;
}

} // namespace tirlo::IslandConst
