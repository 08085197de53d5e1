#include "PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tirlo {

void makePrivateFolder(const QString &path)
{
    constexpr auto ownerAll
        = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    QDir().mkpath(QFileInfo(path).path());
    if (!QDir().mkdir(path, ownerAll))
        QFile::setPermissions(path, ownerAll);
}

} // namespace tirlo
