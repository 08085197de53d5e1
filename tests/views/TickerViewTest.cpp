#include "ViewFixture.h"

#include "ui/TextLabel.h"
#include "views/TickerView.h"

#include <QAccessible>

#include <set>

namespace tirlo {

namespace {

class TickerViewTest : public ViewFixture
{
protected:
    TickerViewTest()
    {
        open(IslandView::overview);
        setTasks({task(focused, focused, {QStringLiteral("one"), QStringLiteral("two")})});
        queue.advance(1);
    }

    void append(const QString &step)
    {
        state.editTask(focused, [&](AgentTask &edited) {
            edited.steps.append(step);
            if (edited.steps.size() > 20)
                edited.steps.removeFirst();
            edited.stepIndex = int(edited.steps.size()) - 1;
        });
    }

    [[nodiscard]] TickerView &ticker() const { return *root->findChild<TickerView *>(); }

    /// The spent and the live step of the wheel as it stood still last.
    [[nodiscard]] QStringList rows() const { return {ticker().spentStep(), ticker().liveStep()}; }

    /// Rows of the ticker's picture in which there is anything to see, top to bottom.
    [[nodiscard]] std::set<int> inkedLines() const
    {
        QImage image(ticker().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        ticker().render(&image, {}, {}, QWidget::RenderFlags());
        std::set<int> lines;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y).alpha() > 40)
                    lines.insert(y);
            }
        }
        return lines;
    }

    const QString focused = QStringLiteral("shop");
};

TEST_F(TickerViewTest, ANewStepRollsInAndTheWheelSettles)
{
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    const auto atRest = inkedLines();
    append(QStringLiteral("six"));
    EXPECT_TRUE(ticker().isTransitioning());
    EXPECT_EQ(inkedLines(), atRest) << "nothing jumps at the start";
    queue.advance(0.2);
    EXPECT_NE(inkedLines(), atRest);
    queue.advance(0.25);
    const auto arrived = inkedLines();
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.1);
    EXPECT_FALSE(ticker().isTransitioning());
    EXPECT_EQ(inkedLines(), arrived) << "nor at the end";
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("two"), QStringLiteral("six")}));
}

TEST_F(TickerViewTest, UnderRapidStepsTheWheelFinishesItsMoveAndGoesOnToTheLatest)
{
    for (int i = 0; i < 5; ++i) {
        append(QStringLiteral("step %1").arg(i));
        queue.advance(0.05);
    }
    const auto *told = QAccessible::queryAccessibleInterface(&ticker());
    EXPECT_EQ(told->role(), QAccessible::StaticText);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("step 4")) << "at once";
    queue.advance(0.3);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("two"), QStringLiteral("step 0")}));
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.5);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("step 3"), QStringLiteral("step 4")}));
    EXPECT_FALSE(ticker().isTransitioning());

    // From here on the last of the kept steps stays at its index.
    for (int i = 0; i < 30; ++i)
        append(QStringLiteral("step %1").arg(i));
    queue.advance(2);
    append(QStringLiteral("new"));
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.5);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("step 29"), QStringLiteral("new")}));
}

TEST_F(TickerViewTest, AnotherTaskRollsInTheSameDirection)
{
    const QString other = QStringLiteral("other");
    state.tasks = state.tasks.value()
        + QList<AgentTask>{task(other, other, {QStringLiteral("first")}),
                           task(QStringLiteral("idle"), QStringLiteral("idle"))};
    state.setFocus(other);
    EXPECT_TRUE(ticker().isTransitioning());
    queue.advance(0.5);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("…"), QStringLiteral("first")}))
        << "the other task's past doesn't stay";

    state.setFocus(QStringLiteral("idle"));
    queue.advance(0.5);
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("…"), QStringLiteral("…")}));
    EXPECT_TRUE(ticker().accessibleName().isEmpty());
    EXPECT_GT(*inkedLines().rbegin(), 22) << "the placeholder stands for the step as well";

    setTasks({});
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("…"), QString()})) << "at once";
    EXPECT_FALSE(ticker().isTransitioning());
}

TEST_F(TickerViewTest, StepsThatNobodySeesDontRoll)
{
    state.view = IslandView::note;
    queue.advance(2);
    append(QStringLiteral("six"));
    EXPECT_FALSE(ticker().isTransitioning());
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("two"), QStringLiteral("six")}));

    open(IslandView::overview);
    frames.setReducesMotion(true);
    append(QStringLiteral("seven"));
    EXPECT_FALSE(ticker().isTransitioning());
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("six"), QStringLiteral("seven")}));
}

TEST_F(TickerViewTest, TheLightSweepsOverTheLiveStepAlone)
{
    const auto picture = [this] {
        QImage image(ticker().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        ticker().render(&image, {}, {}, QWidget::RenderFlags());
        return image;
    };
    const QRect spent(0, 0, ticker().width(), 20);
    const QImage before = picture();
    queue.advance(0.3);
    const QImage after = picture();
    EXPECT_EQ(before.copy(spent), after.copy(spent));
    EXPECT_NE(before, after);

    frames.setReducesMotion(true);
    const QImage still = picture();
    queue.advance(0.3);
    EXPECT_EQ(picture(), still);
}

TEST_F(TickerViewTest, ForeignTextStaysInItsRow)
{
    for (const QString &step :
         {QString(400, u'W'),
          QStringLiteral("検索 · ユーザー認証の実装を探しています。").repeated(4),
          QStringLiteral("מחפש · קובץ ההגדרות של המערכת ").repeated(4),
          QStringLiteral("🚀").repeated(60), QStringLiteral("a\nb\tc\u202Ed")}) {
        append(step);
        queue.advance(1);
        EXPECT_EQ(ticker().accessibleName(), step);
        const auto lines = inkedLines();
        EXPECT_FALSE(lines.contains(0)) << step.toStdString();
        EXPECT_FALSE(lines.contains(ticker().height() - 1)) << step.toStdString();
        EXPECT_LE(ticker().mapTo(root.get(), QPoint(ticker().width(), 0)).x(),
                  40 + 10 + 108 + 322 - 36);
    }
}

} // namespace

} // namespace tirlo
