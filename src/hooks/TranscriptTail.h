#pragma once

#include <QDateTime>
#include <QString>

namespace tirlo {

/// True when the agent's record of a session ends in a turn that its user broke off, and this was
/// written after that time.
///
/// Only the end of it is read, and only of a plain file of the user's own: neither a pipe, which
/// would keep its reader waiting, nor a link to who knows where.
[[nodiscard]] bool endsInInterrupt(const QString &transcript, const QDateTime &after);
} // namespace tirlo
