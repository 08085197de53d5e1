// How long a start takes, with and without sound, beside the first frame of an empty window.
//
//   tools/stage start [RUNS]      9 of each by turns by default

#include "common/MeasuredProgram.h"
#include "common/Row.h"

#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

/// A black window where the island would stand.
class BlackWindow : public QRasterWindow
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::black);
    }
};

int runFloor(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    BlackWindow window;
    window.setFlags(Qt::BypassWindowManagerHint);
    window.setGeometry(QGuiApplication::primaryScreen()->geometry().width() / 2 - 320, 0, 640, 150);
    window.show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--floor") == 0)
        return runFloor(argc, argv);

    // A device that mixes as any other does and plays to nobody.
    qputenv("ALSOFT_DRIVERS", "null");
    const QGuiApplication application(argc, argv);
    const int runs = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 100) : 9;

    std::vector<double> floor;
    std::vector<double> socket;
    std::vector<double> sounding;
    std::vector<double> silent;
    for (int i = 0; i < runs; ++i) {
        floor.push_back(MeasuredProgram(QCoreApplication::applicationFilePath(), {"--floor"})
                            .waitForFirstFrame());
        sounding.push_back(MeasuredProgram(R"({"soundEnabled": true})").waitForFirstFrame());
        silent.push_back(MeasuredProgram(R"({"soundEnabled": false})").waitForFirstFrame());
        socket.push_back(MeasuredProgram().waitForSocket());
    }
    printHeading("Milliseconds from the start on, beside an empty window's first frame");
    printRow("to the first frame of the greeting", median(sounding), median(floor));
    printRow("the same without sound", median(silent), median(floor));
    printRow("to a socket that answers", median(socket), median(floor));
    return 0;
}
