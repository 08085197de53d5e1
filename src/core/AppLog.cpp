#include "AppLog.h"

#include "platform/FileReplacement.h"
#include "platform/MainQueue.h"
#include "platform/PrivateFolder.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace tirlo {

namespace {

constexpr qint64 restartSize = 0x100000;
constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Appends to a plain file; a link in its place is not followed, so that it can't lead elsewhere.
void appendTo(const QByteArray &path, const QByteArray &bytes)
{
    const int fd = open(path.constData(), O_WRONLY | O_APPEND | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return;
    QFile file;
    if (file.open(fd, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        // What a full disk cut short would run into the next line.
        const qint64 before = file.size();
        if (file.write(bytes) != bytes.size())
            file.resize(before);
        file.setPermissions(ownerOnly);
    }
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
    const QString folder = m_paths.logFolder();
    makePrivateFolder(folder);

    const QString stamp = m_clock.wallClock().toString(timestampFormat);
    const QByteArray record = (stamp + u' ' + escapedForLog(line) + u'\n').toUtf8();

    const QString path = folder + u'/' + file;
    const QByteArray nativePath = QFile::encodeName(path);
    struct stat present = {};
    if (lstat(nativePath.constData(), &present) != 0) {
        static_cast<void>(replaceFile(path, record, ownerOnly));
        return;
    }
    // A file with a second name may be somebody else's.
    if (present.st_size >= restartSize || present.st_nlink > 1) {
        QFile::remove(path);
        static_cast<void>(replaceFile(path, record, ownerOnly));
        return;
    }
    appendTo(nativePath, record);
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
