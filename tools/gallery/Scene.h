#pragma once

#include "Sheet.h"

#include "ui/CardBackground.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tirlo {

class AppState;

/// One picture of the gallery: what the store holds while it is taken.
struct Scene
{
    QString caption;
    std::function<void(AppState &)> arrange;
    /// The wash that all cards take; their own ones when absent.
    std::optional<CardBackground::Wash> wash = {};
    /// The accessible name of a button that is pressed first; "" for none.
    QString pressed = {};
};

/// Scenes that share a file.
struct SceneGroup
{
    /// The file's name without its ending.
    QString name;
    std::vector<Scene> scenes;
    /// The strip of screen that each scene shows, in points.
    QSize size = tileSize;
};

/// All groups, in the order in which they are written.
[[nodiscard]] std::vector<SceneGroup> allScenes();

} // namespace tirlo
