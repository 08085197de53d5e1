#include "ViewFixture.h"

using namespace tirlo;

namespace {

class StatusCardsTest : public ViewFixture
{
protected:
    StatusCardsTest()
    {
        setTasks({task("a", "shop", {"Lit", "Teste · npm test"})});
        QObject::connect(&notifications, &Notifications::islandCollapse, &notifications,
                         [this] { ++collapses; });
    }

    int collapses = 0;
};

TEST_F(StatusCardsTest, EachCardTellsItsTextsAndTheSamplesDoNothing)
{
    struct Case
    {
        IslandView view;
        QStringList texts;
        QStringList buttons;
    };
    for (const auto &[view, texts, buttons] :
         {Case{IslandView::question,
               {"shop", "Claude Code is asking a question", "Which search engine to use?"},
               {"Postgres full-text", "Meilisearch", "Algolia"}},
          Case{IslandView::error,
               {"shop", "n8n", "Workflow stopped.",
                "Gmail node timed out after 30s. Retry or open n8n."},
               {"Retry", "Open in n8n"}},
          Case{IslandView::confused,
               {"Too many hits at once.", "Give me a sec — back to work in three seconds."},
               {}}}) {
        open(view);
        EXPECT_EQ(visibleTexts(), texts);
        EXPECT_EQ(visibleButtons(), buttons);
        for (const QString &name : buttons)
            click(name);
        EXPECT_EQ(state.view.value(), view);
    }
    EXPECT_EQ(collapses, 0);

    open(IslandView::finished);
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Claude Code finished", "Teste · npm test"}));
    state.editTask("a", [](AgentTask &edited) { edited.steps.clear(); });
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Claude Code finished", "Session finished"}));
    setTasks({});
    EXPECT_EQ(visibleTexts(), (QStringList{"Claude Code finished", "Session finished"}));

    open(IslandView::empty);
    click("Ask Claude");
    EXPECT_EQ(state.view.value(), IslandView::prompt);
    state.noteMessage = "Handled in VS Code.";
    open(IslandView::note);
    EXPECT_EQ(visibleTexts(), QStringList{"Handled in VS Code."});
}

TEST_F(StatusCardsTest, OpenTerminalTakesTheMostPreferredThatRuns)
{
    open(IslandView::finished);
    const RunningApplication editor{1, "com.microsoft.VSCode", {}};
    const RunningApplication kitty{1, "net.kovidgoyal.kitty", {}};
    const RunningApplication iTerm{2, "com.googlecode.iterm2", {}};
    const RunningApplication terminal{3, "com.apple.Terminal", {}};
    applications.installed = {"com.apple.Terminal"};
    for (const auto &alive : {std::vector{editor, kitty, iTerm, terminal}, {kitty}, {editor}}) {
        applications.alive = alive;
        click("Open terminal");
    }
    EXPECT_EQ(applications.activated, (std::vector{terminal, kitty}));
    EXPECT_EQ(applications.opened, QStringList{"com.apple.Terminal"});
    EXPECT_EQ(collapses, 3) << "the island goes either way";

    applications.alive = {terminal};
    click("Dismiss");
    EXPECT_EQ(collapses, 4);
    EXPECT_EQ(applications.activated.size(), 2U) << "dismissing does nothing else";
}

} // namespace
