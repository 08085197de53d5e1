#pragma once

#include <QJsonObject>
#include <QString>

namespace tirlo {

/// The short line that a pill shows for a tool call, in French whatever the agent speaks.
[[nodiscard]] QString frenchStep(const QString &name, const QJsonObject &input);

/// What a shell command does, in a word: it reads, searches, tests or just runs.
[[nodiscard]] QString bashVerb(const QString &command);

/// The text on one line: the pieces between line breaks and tabs, joined by a blank; empty ones
/// drop out.
///
/// Past `limit` characters it is cut there and gets "…".
[[nodiscard]] QString oneLine(const QString &text, int limit);

} // namespace tirlo
