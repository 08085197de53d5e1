#include "Canvas.h"

#include "mascot/GreetDrawing.h"
#include "mascot/GreetingCanvasView.h"
#include "mascot/GreetParticles.h"
#include "support/MotionParts.h"

#include <cmath>
#include <limits>

using namespace tirlo;

namespace {

using P = GreetPose;

constexpr double never = std::numeric_limits<double>::infinity();
constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};

TEST(GreetPoseTest, TheFilmHasNoLeapAndStaysAtItsEnd)
{
    const auto at = [](double t) { return greetPose(t, notched); };
    for (const double tc : {never, 100.0})
        EXPECT_EQ(pose(100, tc, notched), at(14.6)) << "it stands still at its last moment";
    // The most that may change in a millisecond.
    for (const auto &[member, most] : {std::pair(&P::w, 4.0),
                                       {&P::d, 0.8},
                                       {&P::x, 0.3},
                                       {&P::y, 0.6},
                                       {&P::sy, 0.01},
                                       {&P::open, 0.03}}) {
        for (double t = 0; t < 14; t += 0.001)
            ASSERT_LT(std::abs(at(t + 0.001).*member - at(t).*member), most) << t;
    }
}

/// A moment of the film, on red to show what the film leaves alone.
QImage moment(double t, double tc = never, const GreetCast &cast = {},
              Qt::GlobalColor ground = Qt::red)
{
    QImage image(640, 150, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    drawGreeting(painter, image.size(), t, tc, notched, cast);
    return image;
}

TEST(GreetDrawingTest, TheBurstFliesOverTheCardAndLeavesNothingBehind)
{
    const auto lit = [](double t, const QRect &area) {
        return count(moment(t, never, {}, Qt::black), area,
                     [](const QColor &color) { return color.lightness() > 50; });
    };
    const QRect left(20, 40, 220, 90);
    EXPECT_EQ(lit(0.05, left), 0);
    EXPECT_GT(lit(0.35, left), 40);
    EXPECT_EQ(lit(2.5, left), 0);
    EXPECT_EQ(lit(0.5, QRect(20, 0, 200, 35)), 0) << "above the card";
    EXPECT_EQ(makeGreetParticles(), makeGreetParticles()) << "the same at every run";
}

TEST(GreetDrawingTest, TheFoldEndsInTheCastOfFocusAndOthers)
{
    StoreParts parts;
    const QColor colors[]{Qt::green, Qt::blue, Qt::yellow, Qt::cyan};
    QList<AgentTask> tasks;
    for (const QColor &color : colors) {
        AgentTask task;
        task.id = task.color = color.name();
        task.isIntegration = true;
        tasks.append(task);
    }
    parts.state.tasks = tasks;
    parts.state.focusId = tasks.first().id;
    const QImage folded = moment(2.34, 2, greetCast(parts.state));
    // The mascot at its place from the left, the grid of the others at the right.
    const QPoint places[]{{188, 12}, {444, 6}, {460, 6}, {444, 22}};
    for (std::size_t i = 0; i < std::size(places); ++i)
        EXPECT_LT(qAbs(folded.pixelColor(places[i]).hue() - colors[i].hue()), 8) << i;
    EXPECT_LT(moment(2, 2, greetCast(parts.state)).pixelColor(444, 6).blue(), 8) << "not at once";
    parts.state.editTask(tasks.first().id, [](AgentTask &task) { task.isIntegration = false; });
    EXPECT_EQ(greetCast(parts.state).body, std::nullopt);
}

class GreetingCanvasTest : public testing::Test, protected MotionParts
{
protected:
    GreetingCanvasTest()
    {
        QObject::connect(&notifications, &Notifications::greetComplete, &notifications,
                         [this] { completions.append(queue.mediaTime() - start); });
        QObject::connect(&view, &GreetingCanvasView::foldEnded, &view, [this] { ++foldsEnded; });
        view.setResting(notched);
        // Not at the clock's zero, so that a time taken from the wrong start would show.
        queue.advance(start);
        view.show();
    }

    GreetingCanvasView view{state, notifications, sounds, queue, frames};
    const double start = 50;
    QList<double> completions;
    int foldsEnded = 0;
};

TEST_F(GreetingCanvasTest, PlaysItsSoundsAndCompletesOnceThenStandsStill)
{
    queue.advance(1.35);
    EXPECT_TRUE(sounds.played.isEmpty());
    queue.advance(20);
    EXPECT_EQ(sounds.played, (QStringList{"greet", "blip"}));
    ASSERT_EQ(completions.size(), 1);
    EXPECT_NEAR(completions[0], 4.65, 1e-6) << "not by the safety net, which is ready earlier";
    EXPECT_FALSE(driver.isRunning);
}

TEST_F(GreetingCanvasTest, AnInterruptFreezesThePoseAndFoldsItInSilence)
{
    queue.advance(2);
    const GreetPose before = view.presentPose();
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_EQ(view.presentPose(), before) << "nothing jumps";
    queue.advance(0.3);
    EXPECT_EQ(foldsEnded, 0);
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_NEAR(view.tc(), 2, 1e-9) << "a second call changes nothing";
    queue.advance(20);
    EXPECT_EQ(foldsEnded, 1);
    EXPECT_EQ(sounds.played, QStringList{"greet"});
    EXPECT_TRUE(completions.empty());
    EXPECT_FALSE(driver.isRunning);
}

TEST_F(GreetingCanvasTest, ThePointerCallsOffALateFoldOnly)
{
    queue.advance(4.8);
    Q_EMIT notifications.greetingInterrupt();
    Q_EMIT notifications.greetingHover();
    EXPECT_TRUE(std::isfinite(view.tc()));

    // Each showing is a film of its own.
    view.hide();
    view.show();
    queue.advance(5);
    EXPECT_EQ(completions.size(), 2);
    Q_EMIT notifications.greetingInterrupt();
    Q_EMIT notifications.greetingHover();
    EXPECT_FALSE(view.isFolding());
    EXPECT_EQ(foldsEnded, 1) << "who waits for the fold is told";
}

TEST_F(GreetingCanvasTest, AViewThatIsHiddenOnlyEndsAtItsTime)
{
    view.hide();
    Q_EMIT notifications.greetingInterrupt();
    queue.advance(10);
    EXPECT_EQ(completions.size(), 1);
    EXPECT_EQ(foldsEnded, 0);
}

TEST_F(GreetingCanvasTest, WithReducedMotionThereIsOnePictureAndNoFold)
{
    frames.setReducesMotion(true);
    queue.advance(0.1);
    const GreetPose still = view.presentPose();
    queue.advance(3);
    EXPECT_EQ(view.presentPose(), still);
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_NEAR(view.presentPose().w, notched.width, 1e-9);
    queue.advance(0.04);
    EXPECT_EQ(foldsEnded, 1);
}

} // namespace
