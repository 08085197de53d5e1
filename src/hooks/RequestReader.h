#pragma once

#include "core/model/ApprovalInfo.h"

namespace tirlo {

/// What the permission request of that payload is about, with every argument of the tool in one of
/// its texts: nothing that is allowed is hidden.
[[nodiscard]] RequestContent requestContent(const QJsonObject &payload);

} // namespace tirlo
