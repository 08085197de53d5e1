#pragma once

#include "Sheet.h"

#include <QString>

#include <functional>
#include <vector>

namespace tirlo {

class AppState;

/// One picture of the gallery: what the store holds while it is taken.
struct Scene
{
    QString caption;
    std::function<void(AppState &)> arrange;
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
