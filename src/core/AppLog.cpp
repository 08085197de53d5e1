#include "AppLog.h"

#include "platform/FileReplacement.h"
#include "platform/MainQueue.h"
#include "platform/PrivateFolder.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tirlo {

namespace {

constexpr qint64 restartSize = 0x100000;
constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr mode_t otherUsers = S_IRWXG | S_IRWXO;

/// Appends to a plain file; false if another should take the place of what is there.
bool appendTo(const QByteArray &path, const QByteArray &bytes)
{
    // A link is not followed, so that it can't lead elsewhere.
    const int fd
        = open(path.constData(), O_WRONLY | O_APPEND | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return errno != ENOENT && errno != ELOOP;
    QFile file;
    struct stat present = {};
    if (!file.open(fd, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)
        || fstat(fd, &present) != 0)
        return true;
    // A file with a second name may be somebody else's.
    if (!S_ISREG(present.st_mode) || present.st_nlink > 1 || present.st_size >= restartSize)
        return false;
    if ((present.st_mode & otherUsers) != 0)
        file.setPermissions(ownerOnly);
    if (file.write(bytes) != bytes.size())
        // What a full disk cut short would run into the next line.
        file.resize(present.st_size);
    return true;
}

} // namespace

AppLog::AppLog(Paths paths, const MainQueue &clock)
    : m_paths(std::move(paths))
    , m_clock(clock)
{
}

void AppLog::appendAppLog(const QString &file, const QString &line,
                          const QString &timestampFormat) const
{
    if (m_waiting > restartSize)
        return;
    const QString stamp = m_clock.wallClock().toString(timestampFormat);
    const QByteArray record = (stamp + u' ' + escapedForLog(line) + u'\n').toUtf8();
    m_waiting += record.size();
    m_writing.post([this, file, record] {
        write(file, record);
        m_waiting -= record.size();
    });
}

void AppLog::write(const QString &file, const QByteArray &record) const
{
    const QString folder = m_paths.logFolder();
    if (!std::exchange(m_hasFolder, true))
        makePrivateFolder(folder);

    const QString path = folder + u'/' + file;
    if (appendTo(QFile::encodeName(path), record))
        return;
    // The folder may have gone since the last line.
    makePrivateFolder(folder);
    QFile::remove(path);
    // A log that can't be begun is done without.
    static_cast<void>(replaceFile(path, record, ownerOnly));
}

QString escapedForLog(const QString &text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit >= 32 && unit != 127) {
            escaped += c;
            continue;
        }
        const QString digits = QString::number(unit, 16).toUpper();
        escaped += QStringLiteral("\\u") + digits.rightJustified(4, u'0');
    }
    return escaped;
}

} // namespace tirlo
