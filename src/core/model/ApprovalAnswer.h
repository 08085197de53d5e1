#pragma once

#include "Decision.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace tirlo {

/// A decision with what goes to the agent beside it.
struct ApprovalAnswer
{
    Decision decision = Decision::ask;
    /// With `deny`: what the agent is to do instead; may be empty.
    QString message = {};
    /// With `allow` and `always`: the input that the tool is to run with; none for its own.
    std::optional<QJsonObject> updatedInput = {};
    /// With `always`: the suggestions to keep, as they came, and no others.
    QList<QJsonObject> updatedPermissions = {};

    bool operator==(const ApprovalAnswer &) const = default;
};

} // namespace tirlo
