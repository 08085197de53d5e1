#include "PlainFile.h"

#include <QFile>
#include <QFileInfo>

namespace tirlo {

std::optional<QByteArray> readPlainFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)
        || file.size() > longestPlainFile)
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

} // namespace tirlo
