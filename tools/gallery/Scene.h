#pragma once

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
};

/// All groups, in the order in which they are written.
[[nodiscard]] std::vector<SceneGroup> allScenes();

} // namespace tirlo
