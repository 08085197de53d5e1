#pragma once

#include <QString>

namespace tirlo {

/// The text with its "\n", to which "\r\n" turns, and its tabs, but "�" for all other control
/// characters and for what breaks lines, reorders text, or stands in it unseen.
///
/// What forms letters and emoji stays: joiners between letters of scripts that know them, and
/// variation selectors behind a character that has variants.
[[nodiscard]] QString withoutHiddenMarks(const QString &text);

/// The same on one line: line breaks show as "⏎", tabs as blanks.
[[nodiscard]] QString lineWithoutHiddenMarks(const QString &text);

} // namespace tirlo
