#pragma once

#include <QString>
#include <QStringView>

namespace tirlo {

/// The first `count` user-perceived characters of the text, the whole text if it has no more.
///
/// An emoji or an accented letter is never cut in two. Pathological text that spends more than 64
/// code units a character on average is cut there, so that the work stays bounded.
[[nodiscard]] QString firstCharacters(const QString &text, int count);

/// True when the text has more than `count` user-perceived characters.
[[nodiscard]] bool hasMoreCharacters(const QString &text, int count);

/// The last component of a file path, trailing slashes aside; "/" for the root, "" for "".
[[nodiscard]] QString lastPathComponent(const QString &path);

} // namespace tirlo
