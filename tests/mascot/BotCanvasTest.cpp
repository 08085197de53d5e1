#include "core/IslandLayout.h"
#include "island/IslandWriter.h"
#include "mascot/BotCanvasView.h"
#include "mascot/BotGaze.h"
#include "mascot/MiniBotCanvasView.h"
#include "support/MotionParts.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <cmath>

using namespace tirlo;

namespace {

/// Counts its paint events.
template<typename View>
class Painted : public View
{
public:
    using View::View;

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        View::paintEvent(event);
    }
};

class BotCanvas : public testing::Test, protected MotionParts
{
protected:
    BotCanvas()
    {
        queue.advance(10);
        island.setMode(IslandMode::expanded);
        canvas.resize(97, 137);
        canvas.show();
        play(0.1);
    }

    BotEngine &bot() { return canvas.engine(); }

    IslandWriter island{state};
    Painted<BotCanvasView> canvas{
        BotSurroundings{state, notifications, sounds, queue, frames, screens}};
};

TEST_F(BotCanvas, GazeStartsFromWhereTheMascotIsDrawn)
{
    for (const bool hasNotch : {false, true}) {
        for (const IslandMode mode : allCases<IslandMode>()) {
            state.hasNotch = hasNotch;
            island.setMode(mode);
            const double left = 720 - IslandLayout::islandSize(state).width() / 2;
            state.mousePosition = IslandLayout::mascotPlace(state).centre + QPointF(left, 0);
            EXPECT_EQ(gazeAtPointer(state, screens), QPointF()) << rawText(mode).toStdString();
        }
    }
    state.mousePosition += {260, 200};
    const QPointF gaze = gazeAtPointer(state, screens);
    EXPECT_NEAR(gaze.x(), std::tanh(1), 1e-9);
    EXPECT_NEAR(gaze.y(), -std::tanh(1), 1e-9) << "below is down";
    screens.screens.clear();
    EXPECT_GT(gazeAtPointer(state, screens).x(), gaze.x()) << "without a screen from its left edge";
}

TEST_F(BotCanvas, ShowsTheImposedMoodElseTheFocusedTasks)
{
    AgentTask task;
    task.id = QStringLiteral("agent_a");
    task.color = QStringLiteral("#4285F4");
    task.state = BotState::working;
    task.isIntegration = true;
    state.tasks = QList<AgentTask>{task};
    state.focusId = task.id;
    EXPECT_EQ(bot().state, BotState::working);
    play(0.05);
    EXPECT_EQ(bot().bodyColor, cgColorFromHex(u"#4285F4")) << "an integration lends its colour";
    state.stateOverride = BotState::dizzy;
    state.updateTask(task.id, BotState::error);
    EXPECT_EQ(bot().state, BotState::dizzy);
    state.stateOverride = std::nullopt;
    EXPECT_EQ(bot().state, BotState::error);
}

TEST_F(BotCanvas, PaintsOnlyWhenThePictureChangesAndStandsStillWhileHidden)
{
    state.stateOverride = BotState::error;
    play(1.2);
    bot().nextBlink = queue.mediaTime() + 100;
    play(1);
    canvas.paints = 0;
    play(1);
    EXPECT_EQ(canvas.paints, 0);
    state.mousePosition = {700, 300};
    play(0.1);
    EXPECT_GT(canvas.paints, 3);
    play(1);
    state.stateOverride = BotState::working;
    play(1);
    canvas.paints = 0;
    play(1);
    EXPECT_GT(canvas.paints, 55) << "the badge's dots never rest";

    island.setMode(IslandMode::hidden);
    EXPECT_FALSE(driver.isRunning);
    island.setMode(IslandMode::compact);
    play(0.1);
    EXPECT_EQ(bot().lastTime, queue.mediaTime());
    canvas.hide();
    EXPECT_FALSE(driver.isRunning);
}

TEST_F(BotCanvas, UnfoldsTheBoxForAnUploadAndFoldsItAfterwards)
{
    for (const auto &[view, morph] :
         {std::pair(IslandView::upload, 1), {IslandView::uploading, 1}, {IslandView::choose, 0}}) {
        island.setView(view);
        play(0.6);
        EXPECT_EQ(bot().morph, morph);
    }

    // A file over the box opens its slot, and a closed box has none.
    state.fileDragOver = true;
    play(0.1);
    EXPECT_EQ(bot().slotHTarget, 0);
    Q_EMIT notifications.botMorphTo(1);
    play(1);
    EXPECT_NEAR(bot().slotH, 0.2, 0.001);
    state.fileDragOver = false;
    Q_EMIT notifications.botMorphTo(0);
    play(0.7);
    EXPECT_EQ(bot().slotH, 0);
    island.setMode(IslandMode::compact);
    island.setView(IslandView::upload);
    EXPECT_FALSE(bot().isLocked(BotProperty::morph)) << "only an expanded island unfolds it";
}

TEST_F(BotCanvas, TurnsNotificationsIntoMoves)
{
    Q_EMIT notifications.botBlink();
    EXPECT_TRUE(bot().isLocked(BotProperty::open));
    Q_EMIT notifications.triggerEmote(BotEmote::love);
    EXPECT_EQ(bot().shownEye(), EyeShape::heart);
    Q_EMIT notifications.botGreet();
    EXPECT_EQ(bot().greetToken, 1);

    const QSignalSpy dizzy(&notifications, &Notifications::botDizzy);
    for (int i = 0; i < 3; ++i)
        Q_EMIT notifications.triggerSlap();
    EXPECT_EQ(dizzy.count(), 1);
    EXPECT_TRUE(sounds.played.contains("slap"));
}

TEST_F(BotCanvas, MiniTakesColourMoodAndExpressionFromItsTask)
{
    AgentTask task;
    task.color = QStringLiteral("#22C55E");
    task.state = BotState::working;
    task.miniEye = EyeShape::cup;
    Painted<MiniBotCanvasView> mini(task, queue, frames);
    mini.resize(37, 37);
    mini.show();
    const BotEngine &engine = mini.engine();
    EXPECT_EQ(engine.bodyColor, cgColorFromHex(u"#22C55E"));
    EXPECT_EQ(engine.permanentEye, EyeShape::cup);
    EXPECT_EQ(engine.state, BotState::working);
    island.setMode(IslandMode::hidden);
    mini.paints = 0;
    play(0.5);
    EXPECT_GT(mini.paints, 10) << "it breathes in every mode";
    mini.hide();
    EXPECT_FALSE(driver.isRunning);
}

} // namespace
