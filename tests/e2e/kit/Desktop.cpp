#include "Desktop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QThread>

namespace tirlo::e2e {

bool isVirtualDesktop()
{
    return qEnvironmentVariableIsSet("TIRLO_STAGE");
}

void clickAt(int x, int y)
{
    QProcess::execute(
        "xdotool", {"mousemove", "--sync", QString::number(x), QString::number(y), "click", "1"});
}

void movePointer(int x, int y)
{
    QProcess::execute("xdotool", {"mousemove", QString::number(x), QString::number(y)});
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
