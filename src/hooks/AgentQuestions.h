#pragma once

#include "core/model/ApprovalInfo.h"

#include <QHash>
#include <QStringList>

namespace tirlo {

/// The questions that the payload's tool asks the user; none when it asks nothing.
///
/// Also none when one of them has no text, or the text of another: the answers go by the text, so
/// such questions can only be answered where they were asked.
[[nodiscard]] QList<AgentQuestion> agentQuestions(const QJsonObject &payload);

/// The input that the tool is to run with: its own, and the labels chosen for each question's text.
/// A question without a choice stays unanswered.
[[nodiscard]] QJsonObject answeredInput(const QJsonObject &input,
                                        const QHash<QString, QStringList> &answers);

} // namespace tirlo
