#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"
#include "platform/linux/EwmhWindows.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QWidget>

#include <cstring>

namespace tirlo::x11test {

namespace {

constexpr const char *mark = "--other-application";

} // namespace

OtherApplication::OtherApplication(const QString &windowClass, const QRect &geometry)
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.start(QCoreApplication::applicationFilePath(),
                    {mark, windowClass, QString::number(geometry.x()),
                     QString::number(geometry.y()), QString::number(geometry.width()),
                     QString::number(geometry.height())});
    m_process.waitForStarted();
    e2e::waitUntil([this] { return isActive(); });
}

OtherApplication::~OtherApplication()
{
    m_process.terminate();
    m_process.waitForFinished();
}

qint64 OtherApplication::activeProcess()
{
    const EwmhWindows windows;
    const auto active = windows.activeWindow();
    return active ? windows.applicationOf(active).processId : 0;
}

void OtherApplication::install(const QString &entryId, const QString &windowClass,
                               const QString &name)
{
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + "/applications";
    QDir().mkpath(folder);
    QFile entry(folder + "/" + entryId + ".desktop");
    if (!entry.open(QIODevice::WriteOnly))
        return;
    const QString text
        = "[Desktop Entry]\nType=Application\nName=%1\nExec=%2 %3 %4 0 0 200 200 %U\n";
    entry.write(
        text.arg(name, QCoreApplication::applicationFilePath(), mark, windowClass).toUtf8());
}

bool OtherApplication::isWanted(int argc, char *argv[])
{
    return argc == 7 && std::strcmp(argv[1], mark) == 0;
}

int OtherApplication::run(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(argv[2]);
    QApplication application(argc, argv);
    const auto number = [argv](int index) { return std::atoi(argv[index]); };
    QWidget window;
    window.setGeometry(number(3), number(4), number(5), number(6));
    window.setStyleSheet("background: #204060");
    window.show();
    return QApplication::exec();
}

} // namespace tirlo::x11test
