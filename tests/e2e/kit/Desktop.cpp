#include "Desktop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QScreen>
#include <QThread>

namespace tirlo::e2e {

bool isVirtualDesktop()
{
    return qEnvironmentVariableIsSet("TIRLO_STAGE");
}

void useXdotool(const QStringList &arguments)
{
    QProcess xdotool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (environment.contains("TIRLO_SCREEN"))
        environment.insert("DISPLAY", environment.value("TIRLO_SCREEN"));
    xdotool.setProcessEnvironment(environment);
    xdotool.setProcessChannelMode(QProcess::ForwardedChannels);
    xdotool.start("xdotool", arguments);
    xdotool.waitForFinished();
}

void clickAt(int x, int y)
{
    useXdotool({"mousemove", "--sync", QString::number(x), QString::number(y), "click", "1"});
}

void movePointer(int x, int y)
{
    useXdotool({"mousemove", QString::number(x), QString::number(y)});
}

int screenMiddle()
{
    return QGuiApplication::primaryScreen()->geometry().width() / 2;
}

void takePicture(const QString &path)
{
    QGuiApplication::primaryScreen()->grabWindow(0, screenMiddle() - 380, 0, 760, 340).save(path);
}

void rest(int milliseconds)
{
    waitUntil([] { return false; }, milliseconds);
}

bool waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(15);
    }
    return true;
}

} // namespace tirlo::e2e
