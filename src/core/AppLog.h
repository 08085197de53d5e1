#pragma once

#include "Paths.h"

#include <QString>

namespace tirlo {

class MainQueue;

/// The program's own logs: one line a record, in files of the log folder.
class AppLog
{
public:
    AppLog(Paths paths, const MainQueue &clock);

    /// Appends the present time, a blank and the escaped line to the file of the log folder.
    ///
    /// The folder gets mode 0700, the file 0600. A file of 1,048,576 bytes or more is started anew,
    /// without a copy. Failures are ignored. `timestampFormat` is as for QDateTime::toString().
    void appendAppLog(const QString &file, const QString &line,
                      const QString &timestampFormat) const;

private:
    Paths m_paths;
    const MainQueue &m_clock;
    mutable bool m_hasFolder = false;
};

/// The text with each control character (below 32, and 127) as a backslash, "u" and four digits.
[[nodiscard]] QString escapedForLog(const QString &text);

} // namespace tirlo
