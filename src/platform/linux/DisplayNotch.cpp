#include "DisplayNotch.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace tirlo {

namespace {

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool showsNotch(const QString &systemRoot)
{
    // The driver's module has changed its name over time.
    for (const char *module : {"appledrm", "apple_dcp"}) {
        const QString parameter = QStringLiteral("/sys/module/%1/parameters/show_notch");
        if (content(systemRoot + parameter.arg(QLatin1String(module))).startsWith('Y'))
            return true;
    }
    return false;
}

} // namespace

int shownNotchHeight(const QString &systemRoot)
{
    // No height that a driver believes in is beyond this.
    constexpr quint32 highest = 160;

    if (!showsNotch(systemRoot))
        return 0;
    const QDir devices(systemRoot + QStringLiteral("/proc/device-tree"));
    for (const QString &bus : devices.entryList({QStringLiteral("soc*")}, QDir::Dirs)) {
        const QDir folder(devices.filePath(bus));
        for (const QString &display : folder.entryList({QStringLiteral("dcp*")}, QDir::Dirs)) {
            const QByteArray height
                = content(folder.filePath(display + QStringLiteral("/apple,notch-height")));
            if (height.size() != sizeof(quint32))
                continue;
            return int(std::min(qFromBigEndian<quint32>(height.constData()), highest));
        }
    }
    return 0;
}

} // namespace tirlo
