#include "FileReplacement.h"

#include <QSaveFile>

namespace tirlo {

namespace {

bool writeAll(QSaveFile &file, QByteArrayView bytes)
{
    // A disk that fills up takes a part, and says why it takes no more when asked again.
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

} // namespace

QString replaceFile(const QString &path, QByteArrayView bytes,
                    std::optional<QFileDevice::Permissions> mode)
{
    QSaveFile file(path);
    // Whatever a buffer holds back until the commit may fail there without being noticed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        || (mode && !file.setPermissions(*mode)) || !writeAll(file, bytes) || !file.commit())
        return file.errorString();
    return {};
}

} // namespace tirlo
