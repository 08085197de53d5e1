#pragma once

#include <QList>
#include <QStringList>

namespace tirlo {

/// One line of two texts laid into each other.
struct DiffLine
{
    enum class Kind { kept, removed, added };

    Kind kind = Kind::kept;
    QString text;

    bool operator==(const DiffLine &) const = default;
};

/// Lays two texts into each other line by line, keeping as much of the old one as can be; what is
/// removed stands before what is added in its place.
///
/// Very large changes are taken as one: all of the lines between the first and the last difference.
[[nodiscard]] QList<DiffLine> diffLines(const QString &before, const QString &after);

/// What a reviewer must look at in the new text of a file.
struct LineDiff
{
    /// Numbers of the new text's lines that are new or changed, from 0, rising.
    QList<int> changed;
    /// The old text's lines that are gone or changed, in their order.
    QStringList removed;

    bool operator==(const LineDiff &) const = default;
};

/// The lines of diffLines() that are not the same in both texts.
[[nodiscard]] LineDiff compareLines(const QString &before, const QString &after);

} // namespace tirlo
