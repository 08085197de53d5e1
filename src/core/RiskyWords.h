#pragma once

#include <QList>
#include <QString>

namespace tirlo {

/// A piece of a text, in code units.
struct TextRange
{
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const TextRange &) const = default;
};

/// Where a command says that it destroys, runs what it fetches, or acts as another user; in order,
/// none over another.
///
/// A short table of well-known words to catch the eye. A command without any is not thereby safe.
[[nodiscard]] QList<TextRange> riskyWords(const QString &command);

} // namespace tirlo
