#include "ViewFixture.h"

#include "mascot/GreetingCanvasView.h"
#include "ui/CardBackground.h"
#include "ui/TextLabel.h"
#include "views/BotPlacement.h"

#include <QTest>

namespace tirlo {

namespace {

/// Counts what the widgets of one window paint.
class PaintCounter : public QObject
{
public:
    PaintCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    /// How often any widget painted since the last call.
    int take()
    {
        QTest::qWait(20);
        return std::exchange(count, 0);
    }

    int count = 0;
};

class IslandFrameTest : public ViewFixture
{ };

/// True when the point of the picture, relative to an island of that width, is opaque.
bool isInk(const QImage &image, double islandWidth, int x, int y)
{
    return image.pixelColor(int((720 - islandWidth) / 2) + x, y).alpha() == 255;
}

bool isClear(const QImage &image, double islandWidth, int x, int y)
{
    return image.pixelColor(int((720 - islandWidth) / 2) + x, y).alpha() == 0;
}

TEST_F(IslandFrameTest, OutlineIsDrawnInEveryMode)
{
    struct Case
    {
        IslandMode mode;
        int width;
        int height;
    };
    for (const auto &[mode, width, height] :
         {Case{IslandMode::hidden, 184, 32}, Case{IslandMode::compact, 344, 32},
          Case{IslandMode::expanded, 640, 160}}) {
        state.view = IslandView::note;
        state.mode = mode;
        queue.advance(2);
        QCoreApplication::processEvents();
        const QImage image = picture();
        SCOPED_TRACE(width);
        EXPECT_TRUE(isInk(image, width, 0, 0));
        EXPECT_TRUE(isInk(image, width, width - 1, 0));
        EXPECT_TRUE(isInk(image, width, width / 2, height - 1));
        EXPECT_TRUE(isClear(image, width, 1, height - 1)) << "lower corners are round";
        EXPECT_TRUE(isClear(image, width, width - 2, height - 1));
        EXPECT_TRUE(isClear(image, width, -1, 5));
        EXPECT_TRUE(isClear(image, width, width, 5));
        EXPECT_TRUE(isClear(image, width, width / 2, height));
    }
}

TEST_F(IslandFrameTest, AClosedIslandHoldsTheMascotAlone)
{
    state.mode = IslandMode::compact;
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
}

TEST_F(IslandFrameTest, SizesChangeInMotionAndComeToRest)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    const auto drawnWidth = [this] { return island().shape().width; };
    state.mode = IslandMode::compact;
    queue.advance(2);
    ASSERT_EQ(drawnWidth(), 344);

    state.mode = IslandMode::expanded;
    EXPECT_EQ(drawnWidth(), 344) << "nothing jumps";
    queue.advance(0.1);
    EXPECT_GT(drawnWidth(), 344);
    EXPECT_LT(drawnWidth(), 640);
    queue.advance(0.25);
    EXPECT_GT(drawnWidth(), 640) << "the spring overshoots";
    queue.advance(2);
    EXPECT_EQ(drawnWidth(), 640);
    EXPECT_EQ(island().shape().cornerRadius, 22);

    state.mode = IslandMode::compact;
    queue.advance(0.17);
    EXPECT_GT(drawnWidth(), 344);
    queue.advance(0.18);
    EXPECT_EQ(drawnWidth(), 344) << "closing takes its time and no more";

    frames.setReducesMotion(true);
    state.mode = IslandMode::expanded;
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
    state.mode = IslandMode::hidden;
    queue.advance(2);
    state.view = IslandView::greeting;
    state.mode = IslandMode::expanded;
    queue.advance(3.4);
    QRect before = brightPart(picture());
    EXPECT_NEAR(before.center().x(), 360, 2);

    Q_EMIT notifications.greetingInterrupt();
    state.mode = IslandMode::compact;
    state.view = IslandView::overview;
    EXPECT_NEAR(brightPart(picture()).center().x(), before.center().x(), 2);
    for (double passed = 0; passed < 0.75; passed += 0.02) {
        queue.advance(0.02);
        SCOPED_TRACE(passed);
        const QRect now = brightPart(picture());
        EXPECT_FALSE(now.isEmpty()) << "there is always a mascot";
        EXPECT_LT((now.center() - before.center()).manhattanLength(), 60) << "and it never leaps";
        EXPECT_LE(now.bottom(), island().shape().height) << "nor is it cut";
        before = now;
    }
    EXPECT_EQ(island().shape().width, 344);
    EXPECT_EQ(island().shape().height, 32);
    EXPECT_NEAR(before.center().x(), 188 + 40, 2);
    EXPECT_FALSE(root->findChild<GreetingCanvasView *>()->isVisible());
}

TEST_F(IslandFrameTest, ARequestDuringTheGreetingTakesTheMascotFromWhereItStands)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    open(IslandView::greeting);
    queue.advance(1.4);
    const QRect before = brightPart(picture());
    state.view = IslandView::note;
    EXPECT_FALSE(root->findChild<GreetingCanvasView *>()->isVisible());
    const auto *canvas = root->findChild<BotPlacement *>()->findChild<QWidget *>();
    ASSERT_TRUE(canvas->isVisible());
    EXPECT_NEAR(canvas->mapTo(root.get(), canvas->rect().center()).x(), before.center().x(), 3);
    queue.advance(2);
    EXPECT_LT(canvas->mapTo(root.get(), canvas->rect().center()).x(), 120);
}

TEST_F(IslandFrameTest, AGreetingThatIsCalledBackFromItsFoldStartsAnew)
{
    open(IslandView::greeting);
    Q_EMIT notifications.greetingInterrupt();
    state.mode = IslandMode::compact;
    queue.advance(0.1);
    sounds.played.clear();
    state.mode = IslandMode::expanded;
    queue.advance(5);
    EXPECT_EQ(island().shape().width, 640);
    EXPECT_EQ(sounds.played.size(), 2);
}

TEST_F(IslandFrameTest, OnlyTheSelectedCardIsShown)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    for (const IslandView view : allCases<IslandView>()) {
        open(view);
        int shown = 0;
        for (const CardBackground *card : root->findChildren<CardBackground *>()) {
            if (!card->isVisible())
                continue;
            ++shown;
            EXPECT_EQ(card->mapTo(root.get(), QPoint()).x(), 50);
            EXPECT_EQ(card->width(), 620);
        }
        EXPECT_EQ(shown, view == IslandView::greeting ? 0 : 1) << rawText(view).toStdString();
    }
}

TEST_F(IslandFrameTest, CardsStandBelowTheHeaderAroundTheMascotsMiddle)
{
    const auto cardRect = [this] {
        for (const CardBackground *card : root->findChildren<CardBackground *>()) {
            if (card->isVisible())
                return QRect(card->mapTo(root.get(), QPoint()), card->size());
        }
        return QRect();
    };
    open(IslandView::approval);
    EXPECT_EQ(cardRect(), QRect(50, 52, 620, 98));
    open(IslandView::prompt);
    EXPECT_EQ(cardRect(), QRect(50, 52, 620, 178)) << "the prompt takes all the height";
    state.chatHistory = {ChatMessage{}, ChatMessage{}};
    EXPECT_EQ(cardRect(), QRect(50, 52, 620, 238)) << "and grows with the chat";
}

TEST_F(IslandFrameTest, NothingIsPaintedUnlessItChanges)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")}),
              task(QStringLiteral("b"), QStringLiteral("b"))});
    open(IslandView::overview);
    PaintCounter paints;
    paints.take();
    EXPECT_EQ(paints.take(), 0) << "an island at rest";

    state.editTask(QStringLiteral("a"), [](AgentTask &t) { t.state = BotState::working; });
    state.editTask(QStringLiteral("b"), [](AgentTask &t) { t.sessionCwd = QStringLiteral("/"); });
    state.noteMessage = QStringLiteral("on a card that is not shown");
    state.pendingApproval = ApprovalInfo();
    EXPECT_EQ(paints.take(), 0) << "changes that no visible card shows";

    state.editTask(QStringLiteral("a"), [](AgentTask &t) { t.steps = {QStringLiteral("Lit")}; });
    EXPECT_GT(paints.take(), 0) << "a new step shows";
}

TEST_F(IslandFrameTest, AHiddenIslandPaintsNothing)
{
    for (const bool hasNotch : {true, false}) {
        state.hasNotch = hasNotch;
        open(IslandView::overview);
        state.mode = IslandMode::hidden;
        queue.advance(2);
        PaintCounter paints;
        paints.take();
        queue.advance(10);
        EXPECT_EQ(paints.take(), 0) << hasNotch;
        EXPECT_FALSE(driver.isRunning);
    }
}

TEST_F(IslandFrameTest, ANewStepRepaintsItsLineAndNotTheWholeIsland)
{
    class Region : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                painted = std::max(painted, static_cast<QPaintEvent *>(event)->rect().height());
            return false;
        }
        int painted = 0;
    } region;

    setTasks({task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")})});
    open(IslandView::overview);
    QTest::qWait(20);
    qApp->installEventFilter(&region);
    state.editTask(QStringLiteral("a"), [](AgentTask &t) { t.steps = {QStringLiteral("Lit")}; });
    QTest::qWait(20);
    EXPECT_GT(region.painted, 0);
    EXPECT_LE(region.painted, 44);
}

TEST_F(IslandFrameTest, ANewStepBuildsNoWidgetAnew)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")}),
              task(QStringLiteral("b"), QStringLiteral("b"))});
    open(IslandView::overview);
    const auto before = root->findChildren<QWidget *>();
    state.editTask(QStringLiteral("a"), [](AgentTask &t) {
        t.steps.append(QStringLiteral("Lit"));
        t.stepIndex = 1;
    });
    queue.advance(1);
    EXPECT_EQ(root->findChildren<QWidget *>(), before);
}

TEST_F(IslandFrameTest, AskingFromTheEmptyCardOpensThePrompt)
{
    setTasks({});
    open(IslandView::empty);
    click(QStringLiteral("Ask Claude"));
    EXPECT_EQ(state.view.value(), IslandView::prompt);
}

TEST_F(IslandFrameTest, ANoteShowsItsTextUntilItIsTakenAway)
{
    state.noteMessage = QStringLiteral("Handled in VS Code.");
    open(IslandView::note);
    EXPECT_EQ(visibleTexts(), QStringList{QStringLiteral("Handled in VS Code.")});
    state.noteMessage = std::nullopt;
    EXPECT_EQ(visibleTexts(), QStringList{QString()});
}

} // namespace

} // namespace tirlo
