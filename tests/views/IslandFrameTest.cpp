#include "ViewFixture.h"

#include "mascot/GreetingCanvasView.h"
#include "ui/CardBackground.h"
#include "views/frame/BotPlacement.h"
#include "views/overview/AgentPill.h"
#include "views/overview/TickerView.h"

#include <QPaintEvent>
#include <QTest>

namespace tirlo {

namespace {

/// Where the island has been painted anew.
class Painted : public QObject
{
public:
    explicit Painted(QWidget &island) { island.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_region |= static_cast<QPaintEvent *>(event)->region();
        return false;
    }

    QRegion take()
    {
        QTest::qWait(20);
        return std::exchange(m_region, {});
    }

private:
    QRegion m_region;
};

class IslandFrameTest : public ViewFixture
{
protected:
    /// Lets frames pass, each painted.
    void play(double seconds)
    {
        for (int i = 0; i < int(seconds * 60); ++i) {
            queue.advance(1.0 / 60);
            QCoreApplication::processEvents();
        }
    }

    /// Where the widget is on the island.
    [[nodiscard]] QRect placeOf(const QWidget *widget) const
    {
        return {widget->mapTo(&container(), QPoint()), widget->size()};
    }
};

TEST_F(IslandFrameTest, AClosedIslandHoldsTheMascotAlone)
{
    island.setMode(IslandMode::compact);
    queue.advance(2);
    QCoreApplication::processEvents();
    const QImage image = picture();
    int bright = 0;
    for (int x = 0; x < 344; ++x) {
        const bool isMascot = x > 20 && x < 60;
        const QColor color = image.pixelColor(188 + x, 12);
        bright += color.lightness() > 150 ? 1 : 0;
        EXPECT_TRUE(isMascot || color == QColor(Qt::black)) << x;
    }
    EXPECT_GT(bright, 15);
    EXPECT_TRUE(visibleButtons().isEmpty());
    EXPECT_EQ(image.pixelColor(188 + 172, 31), QColor(Qt::black));
    for (const QPoint &outside : {QPoint(-1, 5), QPoint(344, 5), QPoint(1, 31), QPoint(172, 32)})
        EXPECT_EQ(image.pixelColor(QPoint(188, 0) + outside).alpha(), 0) << outside.x();
}

TEST_F(IslandFrameTest, SizesChangeInMotionAndComeToRest)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    const auto drawnWidth = [this] { return container().shape().width; };
    island.setMode(IslandMode::compact);
    queue.advance(2);
    ASSERT_EQ(drawnWidth(), 344);

    island.setMode(IslandMode::expanded);
    EXPECT_EQ(drawnWidth(), 344) << "nothing jumps";
    queue.advance(0.1);
    EXPECT_GT(drawnWidth(), 344);
    EXPECT_LT(drawnWidth(), 640);
    queue.advance(0.25);
    EXPECT_GT(drawnWidth(), 640) << "the spring overshoots";
    queue.advance(2);
    EXPECT_EQ(drawnWidth(), 640);
    EXPECT_EQ(container().shape().cornerRadius, 22);

    island.setMode(IslandMode::compact);
    queue.advance(0.17);
    EXPECT_GT(drawnWidth(), 344);
    queue.advance(0.18);
    EXPECT_EQ(drawnWidth(), 344) << "closing takes its time and no more";

    frames.setReducesMotion(true);
    island.setMode(IslandMode::expanded);
    queue.advance(0.02);
    EXPECT_EQ(drawnWidth(), 640);
}

/// The mascot's face in the picture: bright pixels, as a rectangle.
QRect brightPart(const QImage &image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).lightness() > 170)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

TEST_F(IslandFrameTest, TheGreetingFoldsIntoTheCompactIslandWithoutAJump)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    island.setMode(IslandMode::hidden);
    queue.advance(2);
    island.setView(IslandView::greeting);
    island.setMode(IslandMode::expanded);
    const auto *canvas = root->findChild<BotPlacement *>()->findChild<QWidget *>();
    EXPECT_FALSE(canvas->isVisible()) << "what the notch hid doesn't come for the film";
    queue.advance(3.4);
    QRect before = brightPart(picture());
    EXPECT_NEAR(before.center().x(), 360, 2);

    Q_EMIT notifications.greetingInterrupt();
    island.setMode(IslandMode::compact);
    island.setView(IslandView::overview);
    EXPECT_NEAR(brightPart(picture()).center().x(), before.center().x(), 2);
    for (double passed = 0; passed < 0.75; passed += 0.02) {
        queue.advance(0.02);
        SCOPED_TRACE(passed);
        const QRect now = brightPart(picture());
        EXPECT_FALSE(now.isEmpty()) << "there is always a mascot";
        EXPECT_LT((now.center() - before.center()).manhattanLength(), 60) << "and it never leaps";
        EXPECT_LE(now.bottom(), container().shape().height) << "nor is it cut";
        before = now;
    }
    EXPECT_EQ(container().shape().width, 344);
    EXPECT_EQ(container().shape().height, 32);
    EXPECT_NEAR(before.center().x(), 188 + 40, 2);
    EXPECT_FALSE(root->findChild<GreetingCanvasView *>()->isVisible());
}

TEST_F(IslandFrameTest, ARequestDuringTheGreetingTakesTheMascotFromWhereItStands)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    open(IslandView::greeting);
    queue.advance(1.4);
    const QRect before = brightPart(picture());
    island.setView(IslandView::note);
    const auto *film = root->findChild<GreetingCanvasView *>();
    EXPECT_TRUE(film->isVisible()) << "it fades while the mascot appears over its own";
    const auto *canvas = root->findChild<BotPlacement *>()->findChild<QWidget *>();
    ASSERT_TRUE(canvas->isVisible());
    EXPECT_NEAR(canvas->mapTo(root.get(), canvas->rect().center()).x(), before.center().x(), 3);
    for (double passed = 0; passed < 0.3; passed += 0.05) {
        EXPECT_FALSE(brightPart(picture()).isEmpty()) << passed << ": there is always a mascot";
        queue.advance(0.05);
    }
    EXPECT_FALSE(film->isVisible());
    queue.advance(2);
    EXPECT_LT(canvas->mapTo(root.get(), canvas->rect().center()).x(), 120);
}

TEST_F(IslandFrameTest, AGreetingThatIsCalledBackFromItsFoldStartsAnew)
{
    open(IslandView::greeting);
    Q_EMIT notifications.greetingInterrupt();
    island.setMode(IslandMode::compact);
    queue.advance(0.1);
    sounds.played.clear();
    island.setMode(IslandMode::expanded);
    queue.advance(5);
    EXPECT_EQ(container().shape().width, 640);
    EXPECT_EQ(sounds.played.size(), 2);
}

TEST_F(IslandFrameTest, OneCardStandsBelowTheHeader)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    const auto cards = [this] {
        QList<QRect> rects;
        for (const CardBackground *card : root->findChildren<CardBackground *>()) {
            if (card->isVisible())
                rects.append(QRect(card->mapTo(root.get(), QPoint()), card->size()));
        }
        return rects;
    };
    for (const IslandView view : allCases<IslandView>()) {
        open(view);
        const int height = view == IslandView::prompt || view == IslandView::mail ? 178 : 98;
        // The higher islands of a file have it in the middle of their room.
        const bool isHigh = view == IslandView::upload || view == IslandView::uploading
            || view == IslandView::choose;
        QList<QRect> expected{QRect(50, isHigh ? 60 : 52, 620, height)};
        if (view == IslandView::greeting)
            expected.clear();
        EXPECT_EQ(cards(), expected) << rawText(view).toStdString();
    }
    open(IslandView::prompt);
    state.chatHistory = {ChatMessage{}, ChatMessage{}};
    EXPECT_EQ(cards(), QList<QRect>({QRect(50, 52, 620, 238)})) << "the prompt grows with the chat";
}

TEST_F(IslandFrameTest, OnlyWhatChangesIsPaintedAnew)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")}),
              task(QStringLiteral("b"), QStringLiteral("b"))});
    // Keeps the line of the countdown away.
    state.isPinned = true;
    open(IslandView::overview);
    play(1);
    Painted painted(*root->findChild<IslandContainer *>());

    // These move by themselves all the time.
    const QRect ticker = placeOf(root->findChild<TickerView *>());
    QRegion moving = ticker;
    for (const QWidget *home : {static_cast<QWidget *>(root->findChild<BotPlacement *>()),
                                static_cast<QWidget *>(root->findChild<AgentPill *>())}) {
        for (const QWidget *mascot : home->findChildren<QWidget *>())
            moving |= placeOf(mascot);
    }

    const auto editA = [this](const std::function<void(AgentTask &)> &edit) {
        return [this, edit] { state.editTask(QStringLiteral("a"), edit); };
    };
    struct Case
    {
        const char *what;
        std::function<void()> change;
        bool isSeen;
    };
    for (const auto &[what, change, isSeen] : {
             Case{"nothing", [] {}, false},
             Case{"a folder", editA([](AgentTask &t) { t.sessionCwd = QStringLiteral("/"); }),
                  false},
             Case{"a step", editA([](AgentTask &t) { t.steps = {QStringLiteral("Lit")}; }), false},
             Case{"a note on another card", [this] { state.noteMessage = QString(); }, false},
             Case{"a request on another card", [this] { state.pendingApproval = ApprovalInfo(); },
                  false},
             Case{"a chat on another card", [this] { state.chatHistory = QList<ChatMessage>(1); },
                  false},
             Case{"a name", editA([](AgentTask &t) { t.name = QStringLiteral("c"); }), true},
             Case{"a mood", editA([](AgentTask &t) { t.state = BotState::working; }), true},
         }) {
        (void)painted.take();
        change();
        play(0.7);
        EXPECT_EQ(!(painted.take() - moving).isEmpty(), isSeen) << what;
    }

    frames.setReducesMotion(true);
    play(1);
    (void)painted.take();
    state.editTask(QStringLiteral("a"), [](AgentTask &t) { t.steps = {QStringLiteral("Liste")}; });
    EXPECT_TRUE(painted.take().intersects(ticker)) << "and what does change shows";
}

TEST_F(IslandFrameTest, AHiddenIslandPaintsNothingWhateverItsTasksDo)
{
    for (const bool hasNotch : {true, false}) {
        state.hasNotch = hasNotch;
        setTasks({task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")})});
        open(IslandView::overview);
        island.setMode(IslandMode::hidden);
        play(1);
        Painted painted(*root->findChild<IslandContainer *>());
        state.editTask(QStringLiteral("a"), [](AgentTask &t) {
            t.state = BotState::working;
            t.steps = {QStringLiteral("Lit")};
        });
        state.tasks = state.tasks.value()
            + QList<AgentTask>{task(QStringLiteral("b"), QStringLiteral("b"))};
        play(1);
        EXPECT_TRUE(painted.take().isEmpty()) << hasNotch;
        EXPECT_FALSE(driver.isRunning);
    }
}

} // namespace

} // namespace tirlo
