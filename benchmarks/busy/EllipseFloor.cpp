#include "EllipseFloor.h"

#include "ui/motion/TimerFrameDriver.h"

#include <QApplication>
#include <QPainter>
#include <QPaintEvent>
#include <QWidget>

namespace {

class EllipseWindow final : public QWidget
{
public:
    EllipseWindow()
        : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_TranslucentBackground);
        setFixedSize(720, 320);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawEllipse(rect());
    }
};

} // namespace

int runEllipseFloor(int argc, char *argv[])
{
    QApplication application(argc, argv);
    EllipseWindow window;
    window.show();
    tirlo::TimerFrameDriver driver;
    driver.onFrame = [&window] { window.update(); };
    driver.start(60);
    return QApplication::exec();
}
