// What a frame of the mascot costs, update and paint, beside a floor: filling the same outline with
// the one gradient that a grey body begins with. Ends with 1 when a goal is missed.

#include "common/Row.h"

#include "mascot/BotColor.h"
#include "mascot/BotDrawing.h"
#include "mascot/BotEngine.h"
#include "mascot/BotShapes.h"
#include "platform/linux/QtMainQueue.h"

#include <QApplication>
#include <QImage>
#include <QLinearGradient>

#include <ctime>
#include <vector>

using namespace tirlo;

namespace {

constexpr int batches = 41;
constexpr int framesPerBatch = 100;
constexpr double bigGoal = 6;
constexpr double miniGoal = 3;

/// A canvas in memory at a device pixel ratio.
QImage canvasOf(QSizeF size, double ratio)
{
    QImage image((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    return image;
}

/// Microseconds of processor time that one call of the work takes in a batch, helper threads of the
/// painter included.
template<typename Work>
double timeBatch(QImage &image, Work work)
{
    const std::clock_t start = std::clock();
    for (int i = 0; i < framesPerBatch; ++i) {
        QPainter painter(&image);
        work(painter);
    }
    return double(std::clock() - start) * 1e6 / CLOCKS_PER_SEC / framesPerBatch;
}

void fillOutline(QPainter &painter, const BotFrame &frame)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(frame.cx, frame.cy);
    QLinearGradient grey(frame.rx * 0.7, frame.ry * -0.85, frame.rx * -0.8, frame.ry * 0.9);
    grey.setColorAt(0, PebboConst::baseTop.paint());
    grey.setColorAt(1, PebboConst::baseBottom.paint());
    painter.fillPath(pebboPath(frame.rx, frame.ry, 0, frame.R), grey);
}

/// Measures floor and frame by turns, prints both and says whether the goal is met.
template<typename Frame>
bool compare(const char *name, BotEngine &engine, QSizeF size, double ratio, double goal,
             Frame drawFrame)
{
    QImage image = canvasOf(size, ratio);
    const BotFrame frame = BotFrame::of(engine, size);
    std::vector<double> floor;
    std::vector<double> whole;
    for (int i = 0; i < batches; ++i) {
        floor.push_back(
            timeBatch(image, [&frame](QPainter &painter) { fillOutline(painter, frame); }));
        whole.push_back(timeBatch(image, [&](QPainter &painter) {
            engine.update(BotEngine::frameStep);
            drawFrame(painter);
        }));
    }
    const QString what = QStringLiteral("%1 at ratio %2").arg(QLatin1String(name)).arg(ratio);
    return printRow(qPrintable(what), median(whole), median(floor), goal);
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QtMainQueue queue;

    constexpr double bigSide = 58 / 0.6;
    constexpr double overhang = 40;
    const QSizeF bigSize(bigSide, bigSide + overhang);
    BotEngine big(queue);
    big.particleOverhang = overhang;
    big.setState(BotState::working, true);
    big.badge = big.cfg.badge;
    big.badgeS = 1;

    constexpr double miniSide = 22 / 0.6;
    const QSizeF miniSize(miniSide, miniSide);
    BotEngine mini(queue);
    mini.isMini = true;
    mini.bodyColor = cgColorFromHex(u"#2DD4BF");
    mini.setState(BotState::working, true);

    bool isGood = true;
    printHeading("A mascot's frame in microseconds of processor time, beside filling its outline");
    for (const double ratio : {1.0, 2.0}) {
        isGood &= compare("big", big, bigSize, ratio, bigGoal, [&](QPainter &painter) {
            drawHandsBehind(painter, big, bigSize);
            draw(painter, big, bigSize);
            drawHandsAndExtras(painter, big, bigSize);
        });
        isGood &= compare("mini", mini, miniSize, ratio, miniGoal,
                          [&](QPainter &painter) { draw(painter, mini, miniSize); });
    }
    return isGood ? 0 : 1;
}
