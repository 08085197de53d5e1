#include "ViewFixture.h"

#include "views/overview/AgentPill.h"
#include "views/overview/AgentPillsView.h"

#include <QAccessible>

using namespace tirlo;

namespace {

class OverviewViewTest : public ViewFixture
{
protected:
    OverviewViewTest() { open(IslandView::overview); }

    /// The names on the pills that can be hit, in the keyboard's order.
    [[nodiscard]] QString pills() const
    {
        QStringList names;
        const QWidget *first = root->findChild<AgentPillsView *>();
        for (QWidget *next = first->nextInFocusChain(); next != first;
             next = next->nextInFocusChain()) {
            const auto *pill = qobject_cast<AgentPill *>(next);
            if (pill && pill->isVisible() && !pill->testAttribute(Qt::WA_TransparentForMouseEvents))
                names.append(pill->accessibleName());
        }
        return names.join(u' ');
    }

    [[nodiscard]] AgentPill *pill(const QString &name) const
    {
        return qobject_cast<AgentPill *>(button(name));
    }
};

TEST_F(OverviewViewTest, HeadLineTellsNameSourceAndProgress)
{
    struct Case
    {
        AgentSource source;
        int stepIndex;
        QStringList steps;
        QStringList texts;
    };
    const QStringList steps{"Lit · a", "Lit · b"};
    for (const auto &[source, stepIndex, taken, texts] :
         {Case{AgentSource::claudeCode, 0, steps, {"shop", "Claude Code", "1/2", "Lit · a"}},
          Case{AgentSource::n8n, 1, steps, {"shop", "n8n", "2/2", "Lit · b"}},
          // Never past the end.
          Case{AgentSource::n8n, 99, steps, {"shop", "n8n", "2/2", "Lit · b"}},
          Case{AgentSource::agent, 7, {}, {"shop", "Agent", ""}}}) {
        AgentTask focused = task("a", "shop", taken);
        focused.source = source;
        focused.stepIndex = stepIndex;
        setTasks({focused});
        EXPECT_EQ(visibleTexts(), texts);
    }
    setTasks({});
    EXPECT_EQ(visibleTexts(), QStringList{QString()}) << "nothing of a task that has gone";
}

TEST_F(OverviewViewTest, FourOthersHaveAPillAndTheFifthWaits)
{
    setTaskCount(6);
    EXPECT_EQ(pills(), "t1 t2 t3 t4");
    QRegion covered;
    for (const AgentPill *shown : root->findChildren<AgentPill *>()) {
        EXPECT_TRUE(shown->parentWidget()->rect().contains(shown->geometry()));
        const QRect capsule = shown->geometry().adjusted(6, 6, -6, -6);
        EXPECT_FALSE(covered.intersects(capsule));
        covered |= capsule;
    }

    const AgentPill *last = pill("t4");
    state.removeTask("t2");
    EXPECT_EQ(pills(), "t1 t3 t4 t5");
    queue.advance(2);
    EXPECT_EQ(pill("t4"), last) << "a task keeps its pill";

    state.focusId = "t3";
    EXPECT_EQ(pills(), "t0 t1 t4 t5");
    setTaskCount(1);
    EXPECT_EQ(pills(), "");
    EXPECT_EQ(visibleButtons(), QStringList{"Open terminal"});
}

TEST_F(OverviewViewTest, EveryPointOfACapsuleIsItsOwn)
{
    setTaskCount(5);
    for (const char *name : {"t1", "t2", "t3", "t4"}) {
        const QRect capsule = placeOf(pill(name)).adjusted(2, 6, -6, -6);
        for (const QPoint &corner : {QPoint(capsule.left() + 3, capsule.center().y()),
                                     QPoint(capsule.right() - 3, capsule.center().y()),
                                     QPoint(capsule.center().x(), capsule.top() + 1),
                                     QPoint(capsule.center().x(), capsule.bottom() - 1)})
            EXPECT_EQ(container().childAt(container().mapFrom(root.get(), corner)), pill(name))
                << name;
    }
}

TEST_F(OverviewViewTest, ATapMovesTheFocusOnceInHalfASecondAndClearsTheBadge)
{
    setTasks({task("t0"), task("t1"), task("integration_claude", "shop")});
    queue.advance(2);
    const auto description = [this] {
        return QAccessible::queryAccessibleInterface(button("t1"))->text(QAccessible::Description);
    };
    state.editTask("t1", [](AgentTask &t) { t.pillBadge = PillBadge::finished; });
    EXPECT_EQ(description(), "finished");

    QTest::mouseDClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       placeOf(pill("t1")).center());
    EXPECT_EQ(state.focusId.value(), "t1");
    click("t0");
    EXPECT_EQ(state.focusId.value(), "t1") << "the swap is still under way";
    EXPECT_EQ(sounds.played, QStringList{"blip"});

    queue.advance(0.5);
    click("VS Code");
    EXPECT_EQ(state.focusId.value(), "integration_claude") << "its pill bears its own name";
    EXPECT_EQ(description(), "");
}

TEST_F(OverviewViewTest, PillsComeAndGoInMotionUnlessItIsToBeReduced)
{
    setTaskCount(3);
    const QRect cell = pill("t1")->geometry();
    click("t1");
    EXPECT_EQ(pills(), "t0 t2") << "the former focus takes its place";
    EXPECT_TRUE(pill("t1")) << "it fades where it stood";
    EXPECT_EQ(pill("t0")->geometry(), cell);
    queue.advance(0.2);
    EXPECT_FALSE(pill("t1"));
    queue.advance(2);

    frames.setReducesMotion(true);
    click("t2");
    EXPECT_FALSE(pill("t2"));
    EXPECT_EQ(pills(), "t0 t1");
}

TEST_F(OverviewViewTest, APillUnderThePointerGrowsAndLightsUp)
{
    setTaskCount(2);
    const QPoint middle = placeOf(pill("t1")).center() - QPoint(2, 0);
    const QPoint fill = middle + QPoint(30, 8);
    // Just right of it, where only one that has grown reaches.
    const QPoint edge = middle + QPoint(44, 0);
    const QImage before = picture();
    QTest::mouseMove(root->windowHandle(), middle);
    QCoreApplication::processEvents();
    EXPECT_EQ(picture().pixelColor(edge), before.pixelColor(edge)) << "nothing jumps";
    queue.advance(1);
    QCoreApplication::processEvents();
    const QImage after = picture();
    EXPECT_EQ(before.pixelColor(fill), QColor(0x0E, 0x0F, 0x11));
    EXPECT_GT(after.pixelColor(fill).green(), 0x28);
    EXPECT_GT(after.pixelColor(edge).green(), before.pixelColor(edge).green() + 10);

    QTest::mouseMove(root->windowHandle(), QPoint(300, 300));
    QCoreApplication::processEvents();
    queue.advance(1);
    EXPECT_EQ(picture().pixelColor(fill), before.pixelColor(fill));
}

TEST_F(OverviewViewTest, StepsRebuildNoWidget)
{
    setTaskCount(5);
    const auto widgets = root->findChildren<QWidget *>();
    for (int i = 0; i < 30; ++i) {
        state.editTask(QString("t%1").arg(i % 5), [&](AgentTask &edited) {
            edited.steps.append(QString("step %1").arg(i));
            edited.stepIndex = int(edited.steps.size()) - 1;
            edited.state = i % 2 ? BotState::working : BotState::finished;
        });
        queue.advance(0.1);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(root->findChildren<QWidget *>(), widgets);
}

} // namespace
