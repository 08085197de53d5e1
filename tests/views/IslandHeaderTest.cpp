#include "ViewFixture.h"

#include "views/frame/TabButton.h"

#include <QAccessible>

using namespace tirlo;

namespace {

class IslandHeaderTest : public ViewFixture
{
protected:
    IslandHeaderTest()
    {
        setTasks({task("a")});
        open(IslandView::overview);
    }

    /// The accessible names of the lit tabs.
    [[nodiscard]] QString litTabs() const
    {
        QStringList names;
        for (const TabButton *tab : root->findChildren<TabButton *>()) {
            if (tab->isOn() && tab->isChecked())
                names.append(tab->accessibleName());
        }
        return names.join(u' ');
    }

    /// The colour at the middle of a tab's left edge, where nothing but its background is.
    [[nodiscard]] QColor background(const QString &tab)
    {
        return picture().pixelColor(placeOf(button(tab)).topLeft() + QPoint(1, 11));
    }
};

TEST_F(IslandHeaderTest, TabsLeadToTheirViewAndAreLitOnIt)
{
    EXPECT_EQ(litTabs(), "Home");
    EXPECT_EQ(background("Home"), QColor(0x1D, 0x1F, 0x23));
    EXPECT_EQ(background("Chat"), QColor(Qt::black));
    for (const auto &[tab, view] : {std::pair("Chat", IslandView::prompt),
                                    {"Drop a file", IslandView::upload},
                                    {"Drop a file", IslandView::upload}}) {
        click(tab);
        EXPECT_EQ(state.view.value(), view);
        EXPECT_EQ(litTabs(), tab) << "a second click never puts it out";
    }

    island.setView(IslandView::empty);
    EXPECT_EQ(litTabs(), "Home");
    island.setView(IslandView::approval);
    EXPECT_EQ(litTabs(), "");
    queue.advance(1);
    click("Home");
    EXPECT_EQ(state.view.value(), IslandView::overview);

    click("Settings");
    EXPECT_EQ(state.view.value(), IslandView::settings);
    click("Mute");
    EXPECT_FALSE(state.soundEnabled.value());
    EXPECT_FALSE(button("Mute"));
    click("Unmute");
    EXPECT_TRUE(state.soundEnabled.value());
}

TEST_F(IslandHeaderTest, OnlyTheChatNotesWhatTheUserLookedAtAndDoesSoFirst)
{
    QList<IslandView> shownAtCapture;
    onCapture = [&] { shownAtCapture.append(state.view); };
    for (const char *tab : {"Drop a file", "Home", "Chat"})
        click(tab);
    EXPECT_EQ(shownAtCapture, QList{IslandView::overview});

    state.promptContext = PromptContext{};
    click("Chat");
    EXPECT_EQ(shownAtCapture.size(), 1) << "what is attached already stays";
}

TEST_F(IslandHeaderTest, EveryControlHasANameAndARoleAndTheTabKeyFollowsTheEye)
{
    setApproval("ls", "a");
    for (const IslandView view : allCases<IslandView>()) {
        open(view);
        SCOPED_TRACE(rawText(view).toStdString());
        for (QAbstractButton *control : root->findChildren<QAbstractButton *>()) {
            const auto *told = QAccessible::queryAccessibleInterface(control);
            const auto role = told->role();
            const bool isTab = qobject_cast<const TabButton *>(control);
            EXPECT_TRUE(isTab ? role == QAccessible::PageTab
                              : role == QAccessible::Button || role == QAccessible::CheckBox)
                << role;
            EXPECT_FALSE(control->isVisible() && told->text(QAccessible::Name).isEmpty());
        }
    }

    open(IslandView::approval);
    root->activateWindow();
    button("Home")->setFocus();
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        order.append(root->focusWidget()->accessibleName());
        QTest::keyClick(root->windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(u' '), "Home Chat Drop a file Settings Mute Request Deny Say why… Allow");
}

TEST_F(IslandHeaderTest, ItFadesOnTheConfusedCardAndCannotBeReachedAnyMore)
{
    const auto *header = root->findChild<IslandHeader *>();
    const QRect room = header->geometry();
    island.setView(IslandView::confused);
    queue.advance(0.1);
    EXPECT_TRUE(header->isVisible()) << "it fades and doesn't vanish";
    click("Chat");
    EXPECT_EQ(state.view.value(), IslandView::confused);
    queue.advance(0.12);
    EXPECT_FALSE(header->isVisible());
    EXPECT_EQ(header->geometry(), room) << "its room stays";
}

} // namespace
