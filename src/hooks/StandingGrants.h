#pragma once

#include "core/model/ApprovalInfo.h"

namespace tirlo {

/// What "always" would keep of the payload's suggestions, one grant each.
///
/// A suggestion that is not understood in every part is left out: nothing is kept unseen. Of modes,
/// only that of accepting edits for the session is kept.
[[nodiscard]] QList<StandingGrant> standingGrants(const QJsonObject &payload);

} // namespace tirlo
