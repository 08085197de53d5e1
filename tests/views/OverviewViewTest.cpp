#include "ViewFixture.h"

#include "views/AgentPill.h"
#include "views/AgentPillsView.h"

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
        settleOn(tasks);
    }

    /// Replaces the tasks and lets the pills come to rest.
    void settleOn(const QList<AgentTask> &tasks)
    {
        setTasks(tasks);
        queue.advance(2);
    }

    /// The names on the pills that can be hit, in the keyboard's order.
    [[nodiscard]] QStringList pills() const
    {
        QStringList names;
        const QWidget *first = root->findChild<AgentPillsView *>();
        for (QWidget *next = first->nextInFocusChain(); next != first;
             next = next->nextInFocusChain()) {
            const auto *pill = qobject_cast<AgentPill *>(next);
            if (pill && pill->isVisible() && !pill->testAttribute(Qt::WA_TransparentForMouseEvents))
                names.append(pill->accessibleName());
        }
        return names;
    }

    [[nodiscard]] AgentPill *pill(const QString &name) const
    {
        return qobject_cast<AgentPill *>(button(name));
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
                           QStringLiteral("1/2"), QStringLiteral("Lit · a")}));

    state.editTask(QStringLiteral("a"), [](AgentTask &edited) {
        edited.source = AgentSource::n8n;
        edited.stepIndex = 1;
    });
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("n8n")));
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("2/2")));
    state.editTask(QStringLiteral("a"), [](AgentTask &edited) { edited.stepIndex = 99; });
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("2/2"))) << "never past the end";

    state.editTask(QStringLiteral("a"), [](AgentTask &edited) {
        edited.source = AgentSource::agent;
        edited.steps.clear();
        edited.stepIndex = 7;
    });
    EXPECT_EQ(visibleTexts(),
              (QStringList{QStringLiteral("shop"), QStringLiteral("Agent"), QString()}));

    setTasks({});
    EXPECT_EQ(visibleTexts(), QStringList{QString()}) << "nothing of a task that has gone";
}

TEST_F(OverviewViewTest, FourOthersHaveAPillAndTheFifthWaits)
{
    setTaskCount(6);
    const auto named = [](const QString &names) { return names.split(u' '); };
    EXPECT_EQ(pills(), named(QStringLiteral("t1 t2 t3 t4")));
    QRegion covered;
    for (const AgentPill *shown : root->findChildren<AgentPill *>()) {
        EXPECT_TRUE(shown->parentWidget()->rect().contains(shown->geometry()));
        const QRect capsule = shown->geometry().adjusted(6, 6, -6, -6);
        EXPECT_FALSE(covered.intersects(capsule));
        covered |= capsule;
    }

    const AgentPill *last = pill(QStringLiteral("t4"));
    state.removeTask(QStringLiteral("t2"));
    EXPECT_EQ(pills(), named(QStringLiteral("t1 t3 t4 t5")));
    queue.advance(2);
    EXPECT_EQ(pill(QStringLiteral("t4")), last) << "a task keeps its pill";

    state.focusId = QStringLiteral("t3");
    EXPECT_EQ(pills(), named(QStringLiteral("t0 t1 t4 t5")));
    setTaskCount(1);
    EXPECT_TRUE(pills().isEmpty());
    EXPECT_EQ(visibleButtons(), QStringList{QStringLiteral("Open terminal")});
}

TEST_F(OverviewViewTest, ATapMovesTheFocusOnceInHalfASecond)
{
    setTaskCount(3);
    const AgentPill *tapped = pill(QStringLiteral("t1"));
    QTest::mouseDClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       tapped->mapTo(root.get(), tapped->rect().center()));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t1"));
    EXPECT_TRUE(button(QStringLiteral("t0"))) << "the former focus takes its place";

    click(QStringLiteral("t0"));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t1")) << "the swap is still under way";
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("blip")});

    queue.advance(0.5);
    click(QStringLiteral("t2"));
    EXPECT_EQ(state.focusId.value(), QStringLiteral("t2"));
}

TEST_F(OverviewViewTest, PillsComeAndGoInMotionUnlessItIsToBeReduced)
{
    setTaskCount(3);
    const QRect cell = pill(QStringLiteral("t1"))->geometry();
    click(QStringLiteral("t1"));
    EXPECT_EQ(pills(), (QStringList{QStringLiteral("t0"), QStringLiteral("t2")}));
    EXPECT_TRUE(pill(QStringLiteral("t1"))) << "it fades where it stood";
    EXPECT_EQ(pill(QStringLiteral("t0"))->geometry(), cell);
    queue.advance(0.2);
    EXPECT_FALSE(pill(QStringLiteral("t1")));
    queue.advance(2);

    frames.setReducesMotion(true);
    click(QStringLiteral("t2"));
    EXPECT_FALSE(pill(QStringLiteral("t2")));
    EXPECT_EQ(pills(), (QStringList{QStringLiteral("t0"), QStringLiteral("t1")}));
}

TEST_F(OverviewViewTest, APillUnderThePointerGrowsAndLightsUp)
{
    setTaskCount(2);
    const AgentPill *hovered = pill(QStringLiteral("t1"));
    const QPoint middle = hovered->mapTo(root.get(), hovered->rect().center());
    const QPoint fill(middle.x() + 30, middle.y() + 8);
    // Just right of it, where only one that has grown reaches.
    const QPoint edge(middle.x() + 44, middle.y());
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
        state.editTask(QStringLiteral("t%1").arg(i % 5), [&](AgentTask &edited) {
            edited.steps.append(QStringLiteral("step %1").arg(i));
            edited.stepIndex = int(edited.steps.size()) - 1;
            edited.state = i % 2 ? BotState::working : BotState::finished;
        });
        queue.advance(0.1);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(root->findChildren<QWidget *>(), widgets);
}

TEST_F(OverviewViewTest, ATapClearsTheBadgeThatThePillDescribes)
{
    settleOn({task(QStringLiteral("t0"), QStringLiteral("t0")),
              task(QStringLiteral("t1"), QStringLiteral("t1")),
              task(QStringLiteral("integration_claude"), QStringLiteral("shop"))});
    EXPECT_TRUE(pill(QStringLiteral("VS Code"))) << "the main editor's bears its own name";
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

} // namespace

} // namespace tirlo
