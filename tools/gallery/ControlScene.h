#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace tirlo {

/// One picture of the shared controls, by themselves.
struct ControlScene
{
    QString caption;
    std::function<std::unique_ptr<QWidget>()> make;
};

/// The controls in all their states, once on each wash of the card's surface.
[[nodiscard]] std::vector<ControlScene> controlScenes();

} // namespace tirlo
