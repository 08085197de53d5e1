#include "ViewFixture.h"

#include "island/Island.h"
#include "island/IslandKeyboard.h"
#include "island/IslandPanel.h"
#include "support/FakePanelWindow.h"
#include "support/FakeWindowShape.h"
#include "ui/Announcement.h"

#include <QAccessible>

using namespace tirlo;

namespace {

/// The views on the island's panel, to which the user has given the keyboard.
class FocusTest : public ViewFixture
{
protected:
    FocusTest()
    {
        panel.setContent(root.get());
        panel.show();
    }
    ~FocusTest() override { root->setParent(nullptr); }

    void giveKeyboard()
    {
        keyboard.toggle();
        QCoreApplication::processEvents();
        ASSERT_TRUE(panel.isActiveWindow());
    }

    /// Presses the key and returns what the keyboard acts on then; "" for nothing.
    QString focusAfter(Qt::Key key)
    {
        QTest::keyClick(panel.windowHandle(), key);
        return focus();
    }

    [[nodiscard]] QString focus() const
    {
        const QWidget *focused = panel.focusWidget();
        return focused && focused != &panel ? focused->accessibleName() : QString();
    }

    void ask(const QString &command) { setApproval(command, "integration_claude"); }

    FakeWindowShape shape;
    FakePanelWindow panelWindow;
    IslandPanel panel{state, shape, panelWindow};
    Island machine{state, notifications, sounds, queue};
    IslandKeyboard keyboard{state, machine, panel, applications};
};

TEST_F(FocusTest, TheKeysGoThroughTheCardAndThenTheHeaderAndSkipWhatGoes)
{
    setTasks({task("integration_claude", "shop"), task("t1"), task("t2")});
    open(IslandView::overview);
    giveKeyboard();
    QStringList order;
    for (int i = 0; i < 9; ++i)
        order.append(focusAfter(i % 2 ? Qt::Key_Tab : Qt::Key_Down));
    EXPECT_EQ(order.join(u'|'),
              "Open VS Code|t1|t2|Home|Chat|Drop a file|Settings|Mute|Open VS Code");
    EXPECT_EQ(focusAfter(Qt::Key_Left), "Mute");
    const QImage plain = picture();
    EXPECT_EQ(focusAfter(Qt::Key_Up), "Settings");
    EXPECT_NE(picture(), plain) << "the ring goes along";

    // The card that fades away can't be reached, nor what stood beside its focus.
    focusAfter(Qt::Key_Tab);
    EXPECT_EQ(focusAfter(Qt::Key_Tab), "Open VS Code");
    island.setView(IslandView::note);
    EXPECT_EQ(focus(), "");
    EXPECT_EQ(focusAfter(Qt::Key_Tab), "Home");
    EXPECT_EQ(focusAfter(Qt::Key_Backtab), "Mute");
    EXPECT_EQ(focusAfter(Qt::Key_Return), "Unmute");
    EXPECT_FALSE(state.soundEnabled.value());
}

TEST_F(FocusTest, NoKeyAnswersARequestThatTheUserHasNotMovedTo)
{
    setTasks({task("integration_claude", "shop")});
    open(IslandView::overview);
    giveKeyboard();
    const auto pressAll = [this] {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter})
            QTest::keyClick(panel.windowHandle(), key);
    };
    const auto goTo = [this](const QString &name) {
        for (int i = 0; i < 20 && focus() != name; ++i)
            focusAfter(Qt::Key_Tab);
        EXPECT_EQ(focus().toStdString(), name.toStdString());
    };
    goTo("Home");
    ask("ls");
    open(IslandView::approval);
    pressAll();
    EXPECT_EQ(focusAfter(Qt::Key_Tab), "Request") << "the next key leads to it";
    goTo("Allow");
    ask("make");
    queue.advance(1);
    EXPECT_EQ(focus(), "") << "the button stands for another request";
    pressAll();
    ask("rm");
    goTo("Allow");
    pressAll();
    EXPECT_TRUE(answers.isEmpty()) << "it has not been seen";
    QTest::keyPress(panel.windowHandle(), Qt::Key_Space);
    queue.advance(1);
    ask("rm -rf /");
    queue.advance(1);
    QTest::keyRelease(panel.windowHandle(), Qt::Key_Space);
    EXPECT_TRUE(answers.isEmpty()) << "the press was meant for the one before";

    ApprovalInfo plan;
    plan.content = {.title = "Approve a plan", .kind = RequestContent::Kind::plan, .text = "x"};
    goTo("Allow");
    setApproval({}, "integration_claude", plan);
    queue.advance(1);
    EXPECT_EQ(focus(), "") << "another button has come in the place of the hidden one";
    pressAll();
    EXPECT_TRUE(answers.isEmpty());
    goTo("Keep planning");
    QTest::keyClick(panel.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(decisions(), QStringList{"deny"});

    ApprovalInfo two;
    QList<AgentQuestion::Option> many;
    for (int i = 0; i < 12; ++i)
        many.append({QString("option %1").arg(i)});
    two.questions = {{.text = "First?", .options = many}, {.text = "Second?", .options = many}};
    setApproval({}, "integration_claude", two);
    open(IslandView::question);
    goTo("option 11");
    const QWidget *last = panel.focusWidget();
    EXPECT_EQ(last->visibleRegion().boundingRect(), last->rect())
        << "what has the focus is scrolled into sight";
    QTest::keyClick(panel.windowHandle(), Qt::Key_Return);
    pressAll();
    EXPECT_EQ(visibleTexts().filter("Second?").size(), 1);
}

/// What a screen reader finds, and what it would speak by itself.
class AccessibilityTest : public FocusTest, public QObject
{
protected:
    /// The names of all that is on show under the role.
    [[nodiscard]] QStringList namesOf(QAccessible::Role role) const
    {
        QStringList names;
        for (QWidget *widget : root->findChildren<QWidget *>()) {
            const auto *told = QAccessible::queryAccessibleInterface(widget);
            if (widget->isVisible() && told->role() == role)
                names.append(told->text(QAccessible::Name));
        }
        return names;
    }

    /// What has come into sight to be spoken, since asked last.
    QStringList spoken() { return std::exchange(heard, {}); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            heard.append(qobject_cast<QWidget *>(watched)->accessibleName());
        return false;
    }

    void SetUp() override
    {
        for (Announcement *announcement : root->findChildren<Announcement *>())
            announcement->installEventFilter(this);
        setTasks({task("integration_claude", "shop", {"one"}), task("agent_codex", "site")});
    }

    QStringList heard;
};

TEST_F(AccessibilityTest, EachRequestAndQuestionIsAnAlertThatIsSpokenOnce)
{
    const QString first("Claude Code, shop, needs permission: Run a command. ls -l");
    ask("ls\n-l");
    open(IslandView::approval);
    EXPECT_EQ(spoken(), QStringList{first});
    EXPECT_EQ(namesOf(QAccessible::AlertMessage), QStringList{first});
    EXPECT_EQ(namesOf(QAccessible::Notification), QStringList{first});
    state.editTask("integration_claude", [](AgentTask &t) { t.steps = {"x"}; });
    EXPECT_EQ(spoken(), QStringList());
    ask(QString(1000, u'x'));
    const QStringList second = spoken();
    ASSERT_EQ(second.size(), 1) << "a card in sight has another request";
    EXPECT_EQ(second.first().size(), 301) << "nobody waits for the end of it";

    ApprovalInfo question;
    question.pillId = "integration_claude";
    question.questions = {{.text = "Which?", .options = {{"This"}, {"That"}}}};
    setApproval({}, "integration_claude", question);
    open(IslandView::question);
    EXPECT_EQ(spoken(), QStringList{"Claude Code, shop, is asking a question: Which? This. That"});
    state.pendingApproval = std::nullopt;
    state.editTask("integration_claude", [](AgentTask &t) {
        t.steps = {"Shall I?"};
        t.state = BotState::question;
    });
    EXPECT_EQ(spoken(), QStringList{"Claude Code, shop, is asking a question: Shall I?"});
}

TEST_F(AccessibilityTest, TheStepIsAStatusTheTabsAreTabsAndMascotsHaveNames)
{
    open(IslandView::overview);
    EXPECT_EQ(namesOf(QAccessible::StatusBar), QStringList{"one"});
    EXPECT_EQ(namesOf(QAccessible::PageTab), (QStringList{"Home", "Chat", "Drop a file"}));
    auto *chat = QAccessible::queryAccessibleInterface(button("Chat"));
    EXPECT_EQ(chat->parent()->role(), QAccessible::PageTabList);
    EXPECT_FALSE(chat->state().selected);
    chat->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(chat->state().selected);
    EXPECT_EQ(state.view.value(), IslandView::prompt);

    state.updateTask("integration_claude", BotState::working);
    island.setMode(IslandMode::compact);
    queue.advance(2);
    EXPECT_EQ(namesOf(QAccessible::Graphic),
              (QStringList{"Claude Code, shop, working", "Codex, site, idle"}));
}

} // namespace
