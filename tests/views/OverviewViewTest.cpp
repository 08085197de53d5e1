#include "ViewFixture.h"

#include "ui/ColorDot.h"
#include "views/AgentPill.h"
#include "views/TickerView.h"

#include <QAccessible>
#include <QTest>

namespace tirlo {

namespace {

class OverviewViewTest : public ViewFixture
{
protected:
    OverviewViewTest() { open(IslandView::overview); }

    /// Tasks t0, t1, … named like their ids.
    void setTaskCount(int count)
    {
        QList<AgentTask> tasks;
        for (int i = 0; i < count; ++i) {
            const QString id = QStringLiteral("t%1").arg(i);
            tasks.append(task(id, id));
        }
        setTasks(tasks);
    }

    [[nodiscard]] QString liveStep() const
    {
        return root->findChild<TickerView *>()->accessibleName();
    }
};

TEST_F(OverviewViewTest, HeadLineTellsNameSourceAndProgress)
{
    AgentTask focused = task(QStringLiteral("a"), QStringLiteral("shop"),
                             {QStringLiteral("Lit · a"), QStringLiteral("Lit · b")});
    focused.source = AgentSource::claudeCode;
    focused.stepIndex = 0;
    setTasks({focused});
    EXPECT_EQ(visibleTexts(),
              (QStringList{QStringLiteral("shop"), QStringLiteral("Claude Code"),
                           QStringLiteral("1/2")}));
    EXPECT_EQ(liveStep(), QStringLiteral("Lit · a"));

    state.editTask(QStringLiteral("a"), [](AgentTask &edited) {
        edited.source = AgentSource::n8n;
        edited.stepIndex = 1;
    });
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("n8n")));
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("2/2")));
    EXPECT_EQ(liveStep(), QStringLiteral("Lit · b"));

    state.editTask(QStringLiteral("a"), [](AgentTask &edited) {
        edited.source = AgentSource::agent;
        edited.steps.clear();
        edited.stepIndex = 7;
    });
    EXPECT_EQ(visibleTexts(), (QStringList{QStringLiteral("shop"), QStringLiteral("Agent")}));
    EXPECT_EQ(liveStep(), QString());

    setTasks({});
    EXPECT_TRUE(visibleTexts().isEmpty()) << "nothing of a task that has gone";
}

TEST_F(OverviewViewTest, AStepIndexPastTheEndShowsTheLastStep)
{
    AgentTask focused = task(QStringLiteral("a"), QStringLiteral("a"), {QStringLiteral("Liste")});
    focused.stepIndex = 99;
    setTasks({focused});
    EXPECT_EQ(liveStep(), QStringLiteral("Liste"));
}

TEST_F(OverviewViewTest, FourOthersHaveAPillAndTheFifthWaits)
{
    setTaskCount(6);
    EXPECT_EQ(visibleButtons().size(), 4);
    EXPECT_FALSE(button(QStringLiteral("t0"))) << "the focused task has none";
    EXPECT_FALSE(button(QStringLiteral("t5")));

    state.removeTask(QStringLiteral("t2"));
    EXPECT_TRUE(button(QStringLiteral("t5")));
    EXPECT_EQ(visibleButtons().size(), 4);

    setTaskCount(1);
    EXPECT_TRUE(visibleButtons().isEmpty());
}

TEST_F(OverviewViewTest, PillsNeitherOverlapNorLeaveTheCard)
{
    setTaskCount(5);
    const auto pills = root->findChildren<AgentPill *>();
    for (const AgentPill *pill : pills) {
        const QRect capsule = pill->geometry().adjusted(6, 6, -6, -6);
        EXPECT_EQ(capsule.height(), AgentPill::capsuleHeight);
        EXPECT_TRUE(pill->parentWidget()->rect().contains(pill->geometry()));
        for (const AgentPill *other : pills) {
            const QRect otherCapsule = other->geometry().adjusted(6, 6, -6, -6);
            EXPECT_TRUE(other == pill || !capsule.intersects(otherCapsule));
        }
    }
}

TEST_F(OverviewViewTest, ATapMovesTheFocusOnceInHalfASecond)
{
    setTaskCount(3);
    click(QStringLiteral("t1"));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t1"));
    EXPECT_TRUE(button(QStringLiteral("t0"))) << "the former focus takes its place";

    click(QStringLiteral("t0"));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t1")) << "the swap is still under way";
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("blip")});

    queue.advance(0.5);
    click(QStringLiteral("t2"));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t2"));
}

TEST_F(OverviewViewTest, ATapClearsTheBadgeThatThePillDescribes)
{
    setTaskCount(2);
    const auto description = [this](const QString &name) {
        return QAccessible::queryAccessibleInterface(button(name))->text(QAccessible::Description);
    };
    state.editTask(QStringLiteral("t1"), [](AgentTask &t) { t.pillBadge = PillBadge::finished; });
    EXPECT_EQ(description(QStringLiteral("t1")), QStringLiteral("finished"));

    click(QStringLiteral("t1"));
    queue.advance(0.5);
    click(QStringLiteral("t0"));
    EXPECT_EQ(description(QStringLiteral("t1")), QString());
}

TEST_F(OverviewViewTest, ThePillOfTheMainEditorAlwaysBearsItsName)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a")),
              task(QStringLiteral("integration_claude"), QStringLiteral("shop"))});
    EXPECT_EQ(visibleButtons(), QStringList{QStringLiteral("VS Code")});
}

TEST_F(OverviewViewTest, TheDotHasTheTasksColour)
{
    AgentTask focused = task(QStringLiteral("a"), QStringLiteral("a"));
    focused.color = QStringLiteral("#F7B32B");
    setTasks({focused});
    const QImage image = picture();
    // The dot is the first thing right of the mascot's place.
    EXPECT_EQ(image.pixelColor(40 + 10 + 108 + 3, 52 + 24), QColor(0xF7, 0xB3, 0x2B));
}

} // namespace

} // namespace tirlo
