#pragma once

#include "Paths.h"
#include "platform/BackgroundWorker.h"

#include <QString>

#include <atomic>

namespace tirlo {

class MainQueue;

/// The program's own logs: one line a record, in files of the log folder.
///
/// The files are written in the background, so that a slow disk holds nobody up.
class AppLog
{
public:
    AppLog(Paths paths, const MainQueue &clock);

    /// Appends the present time, a blank and the escaped line to the file of the log folder.
    ///
    /// The folder gets mode 0700, the file 0600. A file of 1,048,576 bytes or more is started anew,
    /// without a copy. Failures are ignored, and lines are left out while more than such a file
    /// holds waits to be written. `timestampFormat` is as for QDateTime::toString().
    void appendAppLog(const QString &file, const QString &line,
                      const QString &timestampFormat) const;

    /// Waits until all lines are written. The log does so too when it goes.
    void flush() const { m_writing.wait(); }

private:
    void write(const QString &file, const QByteArray &record) const;

    Paths m_paths;
    const MainQueue &m_clock;
    mutable bool m_hasFolder = false;
    /// Bytes not yet written.
    mutable std::atomic<qsizetype> m_waiting = 0;
    mutable BackgroundWorker m_writing{BackgroundWorker::AtEnd::finish};
};

/// The text with each control character (below 32, and 127) as a backslash, "u" and four digits.
[[nodiscard]] QString escapedForLog(const QString &text);

} // namespace tirlo
