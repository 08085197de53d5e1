#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tirlo::e2e {

/// One control as the accessibility bus tells of it; the rectangle is in screen pixels.
struct AccessibleNode
{
    std::string name;
    /// The role's name as the bus spells it, such as "push button" or "label".
    std::string role;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// All controls on show of the application with this process id; empty when the bus has none.
[[nodiscard]] std::vector<AccessibleNode> visibleNodes(long processId);

/// The first control on show with this role and name.
[[nodiscard]] std::optional<AccessibleNode> findNode(long processId, const std::string &role,
                                                     const std::string &name);

/// Whether a control on show has a name that holds the text.
[[nodiscard]] bool showsText(long processId, const std::string &text);

} // namespace tirlo::e2e
