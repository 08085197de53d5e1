#pragma once

#include <QRect>

#include <optional>
#include <string>
#include <vector>

namespace tirlo::e2e {

/// One control as the accessibility bus tells of it.
struct AccessibleNode
{
    std::string name;
    /// The role's name as the bus spells it, such as "push button" or "label".
    std::string role;
    /// In screen pixels.
    QRect place;
    /// What a box of text holds.
    std::string content;
};

/// All controls on show of the application with this process id; empty when the bus has none.
[[nodiscard]] std::vector<AccessibleNode> visibleNodes(long processId);

/// The first control on show with this role and name.
[[nodiscard]] std::optional<AccessibleNode> findNode(long processId, const std::string &role,
                                                     const std::string &name);

/// Whether a control on show has a name or a content that holds the text.
[[nodiscard]] bool showsText(long processId, const std::string &text);

} // namespace tirlo::e2e
