#pragma once

#include "core/model/ApprovalAnswer.h"

#include <QByteArray>

namespace tirlo {

/// The line that tells the relay of the answer.
///
/// A member that has no place beside the decision is left out. "always" says what it keeps, be it
/// nothing, since a reply that does not would keep whatever was suggested.
[[nodiscard]] QByteArray replyLine(const ApprovalAnswer &answer);

} // namespace tirlo
