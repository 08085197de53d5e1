#include "ViewFixture.h"

#include "views/overview/TickerView.h"

#include <QAccessible>

#include <set>

using namespace tirlo;

namespace {

class TickerViewTest : public ViewFixture
{
protected:
    TickerViewTest()
    {
        open(IslandView::overview);
        setTasks({task("shop", "shop", {"one", "two"})});
        queue.advance(1);
    }

    void append(const QString &step)
    {
        state.editTask("shop", [&](AgentTask &edited) {
            edited.steps.append(step);
            if (edited.steps.size() > 20)
                edited.steps.removeFirst();
            edited.stepIndex = int(edited.steps.size()) - 1;
        });
    }

    [[nodiscard]] TickerView &ticker() const { return *root->findChild<TickerView *>(); }

    /// Whether the wheel is in motion, and the steps that it shows at rest: the spent and the live.
    void expectRows(bool isTransitioning, const QString &spent, const QString &live) const
    {
        EXPECT_EQ(ticker().isTransitioning(), isTransitioning);
        EXPECT_EQ(ticker().spentStep(), spent);
        EXPECT_EQ(ticker().liveStep(), live);
    }

    /// Rows of the ticker's picture in which there is anything to see, top to bottom.
    [[nodiscard]] std::set<int> inkedLines()
    {
        const QImage image = picture(&ticker());
        std::set<int> lines;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y).alpha() > 40)
                    lines.insert(y);
            }
        }
        return lines;
    }
};

TEST_F(TickerViewTest, ANewStepRollsInUnlessNobodySeesItOrMotionIsUnwanted)
{
    expectRows(false, "one", "two");
    const auto atRest = inkedLines();
    append("six");
    EXPECT_TRUE(ticker().isTransitioning());
    EXPECT_EQ(inkedLines(), atRest) << "nothing jumps at the start";
    queue.advance(0.45);
    const auto arrived = inkedLines();
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.1);
    expectRows(false, "two", "six");
    EXPECT_EQ(inkedLines(), arrived) << "nor at the end";

    frames.setReducesMotion(true);
    append("seven");
    expectRows(false, "six", "seven");
    frames.setReducesMotion(false);
    island.setView(IslandView::note);
    queue.advance(2);
    append("eight");
    expectRows(false, "seven", "eight");
}

TEST_F(TickerViewTest, UnderRapidStepsTheWheelFinishesItsMoveAndGoesOnToTheLatest)
{
    for (int i = 0; i < 5; ++i) {
        append(QStringLiteral("step %1").arg(i));
        queue.advance(0.05);
    }
    const auto *told = QAccessible::queryAccessibleInterface(&ticker());
    EXPECT_EQ(told->role(), QAccessible::StatusBar);
    EXPECT_EQ(told->text(QAccessible::Name), "step 4") << "at once";
    queue.advance(0.3);
    expectRows(true, "two", "step 0");
    queue.advance(0.5);
    expectRows(false, "step 3", "step 4");

    // From here on the last of the kept steps stays at its index.
    for (int i = 0; i < 30; ++i)
        append(QStringLiteral("step %1").arg(i));
    queue.advance(2);
    append("new");
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.5);
    expectRows(false, "step 29", "new");
}

TEST_F(TickerViewTest, AnotherTaskRollsInTheSameDirection)
{
    state.tasks
        = state.tasks.value() + QList<AgentTask>{task("other", "other", {"first"}), task("idle")};
    state.setFocus("other");
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.5);
    // The other task's past doesn't stay.
    expectRows(false, "…", "first");

    state.setFocus("idle");
    queue.advance(0.5);
    expectRows(false, "…", "…");
    EXPECT_TRUE(ticker().accessibleName().isEmpty());
    setTasks({});
    expectRows(false, "…", "");
}

TEST_F(TickerViewTest, ForeignTextStaysInItsRow)
{
    for (const QString &step :
         {QString(400, u'W'), QString("検索 · ユーザー認証の実装を探しています。").repeated(4),
          QString("מחפש · קובץ ההגדרות של המערכת ").repeated(4), QString("🚀").repeated(60),
          QString("a\nb\tc\u202Ed")}) {
        append(step);
        queue.advance(1);
        EXPECT_EQ(ticker().accessibleName(), step);
        const auto lines = inkedLines();
        EXPECT_FALSE(lines.contains(0) || lines.contains(ticker().height() - 1))
            << step.toStdString();
        EXPECT_LT(placeOf(&ticker()).right(), 40 + 10 + 108 + 322 - 36);
    }
}

} // namespace
