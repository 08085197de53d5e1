#pragma once

#include <QJsonObject>
#include <QString>

namespace tirlo {

/// The bundle identifier of the editor that a hook ran in, as the relay's facts tell: the programs
/// above the agent, else what editors hand down in the environment. "" for a plain terminal, and
/// for a relay that tells nothing.
[[nodiscard]] QString editorOf(const QJsonObject &payload);

} // namespace tirlo
