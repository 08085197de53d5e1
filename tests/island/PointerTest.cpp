#include "IslandFixture.h"

#include <QSignalSpy>

using namespace tirlo;

namespace {

class PointerTest : public IslandFixture
{
protected:
    PointerTest()
    {
        point(away);
        QObject::connect(&notifications, &Notifications::botSetTgEs, &notifications,
                         [this](double scale) { eyeScale = scale; });
    }

    /// Presses and releases where the pointer is.
    void click()
    {
        const QPoint local = (pointer.at - controller.panel().pos()).toPoint();
        QTest::mouseClick(controller.panel().windowHandle(), Qt::LeftButton, Qt::NoModifier, local);
    }

    void openByClick()
    {
        point(onTheTab);
        click();
    }

    /// The middle of the mascot on the open overview.
    static constexpr QPointF onTheMascot{400 + 68, 101};

    const QSignalSpy emotes{&notifications, &Notifications::triggerEmote};
    const QSignalSpy blinks{&notifications, &Notifications::botBlink};
    const QSignalSpy slaps{&notifications, &Notifications::triggerSlap};
    double eyeScale = 0;
};

TEST_F(PointerTest, AHitAreaIsTightUntilItIsOpenOrHasANotch)
{
    const auto isIn = [this](QPointF place) {
        return controller.panel().hitArea().contains(place - controller.panel().pos());
    };
    Q_EMIT notifications.hookReveal();
    EXPECT_TRUE(isIn({601, 23}));
    EXPECT_FALSE(isIn({598, 12}));
    EXPECT_FALSE(isIn({720, 27}));
    state.hasNotch = true;
    EXPECT_TRUE(isIn({596, 12}));
    EXPECT_FALSE(isIn({720, 31}));
    state.hasNotch = false;
    island.open(IslandView::overview);
    EXPECT_TRUE(isIn({396, 165}));
    EXPECT_FALSE(isIn({393, 80}));
}

TEST_F(PointerTest, AClickOpensAClosedIslandAndOnTheOpenMascotIsASlap)
{
    openByClick();
    EXPECT_TRUE(isOpenOn(IslandView::overview));
    EXPECT_EQ(slaps.count(), 0);
    point(onTheMascot);
    QTest::mouseDClick(controller.panel().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       (pointer.at - controller.panel().pos()).toPoint());
    EXPECT_EQ(slaps.count(), 2) << "two presses, however quick";
    island.show(IslandView::note);
    point(onTheMascot + QPointF(50, 0));
    click();
    EXPECT_EQ(slaps.count(), 2) << "beside the canvas' circle";
    EXPECT_TRUE(isOpenOn(IslandView::note)) << "an open island stays on its card";
}

TEST_F(PointerTest, ThePositionIsPublishedInStepsOfMoreThanAPoint)
{
    point({100, 100});
    point({101, 99});
    EXPECT_EQ(state.mousePosition, QPointF(100, 100));
    point({101.5, 99});
    EXPECT_EQ(state.mousePosition, QPointF(101.5, 99));
}

TEST_F(PointerTest, AHandThatRestsOnTheMascotEarnsAHeartEverySixSeconds)
{
    queue.advance(10);
    openByClick();
    // A hand that moves begins its rest anew.
    point(onTheMascot - QPointF(25, 0));
    EXPECT_EQ(eyeScale, 1.08);
    queue.advance(1.8);
    point(onTheMascot + QPointF(25, 0));
    queue.advance(1.8);
    EXPECT_TRUE(emotes.isEmpty());
    queue.advance(0.2);
    ASSERT_EQ(emotes.count(), 1);
    EXPECT_EQ(emotes[0][0].value<BotEmote>(), BotEmote::love);

    point(away);
    EXPECT_EQ(eyeScale, 1.0);
    point(onTheMascot);
    queue.advance(4);
    EXPECT_EQ(blinks.count(), 1) << "not so soon again";
    EXPECT_EQ(emotes.count(), 1);
    point(away);
    queue.advance(3);
    point(onTheMascot);
    queue.advance(2);
    EXPECT_EQ(blinks.count(), 2);
    EXPECT_EQ(emotes.count(), 2);
    EXPECT_EQ(sounds.played.count(QStringLiteral("love")), 2);
    EXPECT_EQ(sounds.played.count(QStringLiteral("hover")), 2);

    state.stateOverride = BotState::dizzy;
    queue.advance(0.1);
    EXPECT_EQ(eyeScale, 1.0) << "an imposed mood ends the play";
}

TEST_F(PointerTest, WhereThePointerIsOnlyKnownOverOurWindowItHasToBeThere)
{
    pointer.isSeenEverywhere = false;
    point(onTheTab);
    EXPECT_EQ(state.mode.value(), IslandMode::hidden) << "a last position is not a present one";
}

} // namespace
