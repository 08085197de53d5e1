#pragma once

#include <QString>

namespace tirlo {

/// The beginning of a Markdown text as plain text on one line, for a place that shows two lines.
///
/// Marks of emphasis, code, links, headings and lists are gone, raw HTML stays the text it is, and
/// hidden marks are visible. Of a long text no more than about 240 characters remain, with "…".
[[nodiscard]] QString plainText(const QString &markdown);

} // namespace tirlo
