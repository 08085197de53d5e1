#include "Floors.h"

#include <QApplication>
#include <QCursor>
#include <QTimer>
#include <QWidget>

namespace {

int run(int argc, char *argv[], bool polls)
{
    QApplication application(argc, argv);
    QWidget window(nullptr, Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.setFixedSize(720, 320);
    window.show();

    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QPoint last;
    QObject::connect(&timer, &QTimer::timeout, [&last] { last = QCursor::pos(); });
    if (polls)
        timer.start(17); // a little slower than 60 Hz, in the floor's favour
    return QApplication::exec();
}

} // namespace

int runWindowFloor(int argc, char *argv[])
{
    return run(argc, argv, false);
}

int runPollFloor(int argc, char *argv[])
{
    return run(argc, argv, true);
}
