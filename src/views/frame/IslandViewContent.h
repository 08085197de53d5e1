#pragma once

#include "core/model/IslandView.h"
#include "views/ViewContext.h"

class QWidget;

/// The switch from a view to its card.
namespace tirlo::IslandViewContent {

/// Makes the view's card, to be owned by the caller; null for a view that has no card.
[[nodiscard]] QWidget *make(IslandView view, const ViewContext &context);

} // namespace tirlo::IslandViewContent
