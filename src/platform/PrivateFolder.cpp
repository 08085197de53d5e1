#include "PrivateFolder.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <cerrno>

namespace tirlo {

QString makeMissingFolders(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), S_IRWXU) == 0)
        return {};
    int error = errno;
    if (error == ENOENT && !path.isEmpty()) {
        if (QString reason = makeMissingFolders(QFileInfo(path).path()); !reason.isEmpty())
            return reason;
        error = mkdir(name.constData(), S_IRWXU) == 0 ? 0 : errno;
    }
    if (error == EEXIST)
        error = QFileInfo(path).isDir() ? 0 : ENOTDIR;
    return error == 0 ? QString() : qt_error_string(error);
}

void makePrivateFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat present = {};
    // What is as it should be is left: whoever watches would take it for a change.
    if (makeMissingFolders(path).isEmpty() && stat(name.constData(), &present) == 0
        && (present.st_mode & ALLPERMS) != S_IRWXU)
        chmod(name.constData(), S_IRWXU);
}

} // namespace tirlo
