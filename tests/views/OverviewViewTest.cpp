#include "ViewFixture.h"

#include "views/overview/AgentPill.h"
#include "views/overview/AgentPillsView.h"

#include <QAccessible>

#include <tuple>

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
    using Case = std::tuple<AgentSource, int, QStringList, QStringList>;
    const QStringList steps{"Lit · a", "Lit · b"};
    for (const auto &[source, stepIndex, taken, texts] :
         {Case{AgentSource::claudeCode, 0, steps, {"shop", "Claude Code", "1/2", "Lit · a"}},
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

TEST_F(OverviewViewTest, SeveralSessionsCanBeLookedAt)
{
    AgentTask busy = task("a", "shop", {"Lit · a"});
    setTasks({busy, task("b")});
    EXPECT_FALSE(button("1 sessions"));
    const QDateTime noon(QDate(2026, 1, 2), QTime(12, 5));
    busy.sessions = {{"1", "shop", "waiting in the terminal", BotState::approval, true, noon},
                     {"2", "api", "Lit · b", BotState::working, false, noon}};
    setTasks({busy, task("b")});
    click("2 sessions");
    const QStringList texts = visibleTexts();
    for (const char *part : {"shop", "waiting in the terminal", "api", "Lit · b"})
        EXPECT_TRUE(texts.contains(part)) << part;
    EXPECT_EQ(texts.filter("since ").size(), 2);
    EXPECT_FALSE(texts.contains("Lit · a")) << "the live line makes room";

    // It follows, and goes with what it told of.
    busy.sessions[1].step = "Lit · c";
    setTasks({busy, task("b")});
    EXPECT_TRUE(visibleTexts().contains("Lit · c"));
    busy.sessions.removeFirst();
    setTasks({busy, task("b")});
    EXPECT_TRUE(visibleTexts().contains("Lit · a"));
    EXPECT_TRUE(visibleTexts().filter("since ").isEmpty());
}

TEST_F(OverviewViewTest, FourOthersHaveAPillAndTheFifthWaits)
{
    setTaskCount(6);
    EXPECT_EQ(pills(), "t1 t2 t3 t4");
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
    EXPECT_EQ(description(), "idle");
}

} // namespace
