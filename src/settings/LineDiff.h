#pragma once

#include <QList>
#include <QStringList>

namespace tirlo {

/// What a reviewer must look at in the new text of a file.
struct LineDiff
{
    /// Numbers of the new text's lines that are new or changed, from 0, rising.
    QList<int> changed;
    /// The old text's lines that are gone or changed, in their order.
    QStringList removed;

    bool operator==(const LineDiff &) const = default;
};

/// Compares two texts line by line, keeping as much of the old one as can be.
///
/// Very large changes are taken as one: all of the lines between the first and the last difference.
[[nodiscard]] LineDiff compareLines(const QString &before, const QString &after);

} // namespace tirlo
