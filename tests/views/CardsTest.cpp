#include "ViewFixture.h"

#include "views/frame/CountdownBar.h"

#include <array>
#include <limits>

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

TEST_F(StatusCardsTest, EachCardTellsWhatIsSo)
{
    const auto say = [this](const QString &outcome) {
        state.editTask("agent_gemini", [&](AgentTask &edited) { edited.outcome = outcome; });
    };
    setTasks({task("agent_gemini", "shop", {"Lit", "Teste · npm test"})});
    open(IslandView::finished);
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Gemini CLI finished", "Session finished"}));
    say("All **is** well.");
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Gemini CLI finished", "All **is** well."}));

    open(IslandView::error);
    say({});
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Gemini CLI stopped", "The turn failed."}));
    say("API Error: 400");
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Gemini CLI stopped", "API Error: 400"}));
    applications.installed = {"com.apple.Terminal"};
    click("Look into it");
    EXPECT_EQ(applications.opened, QStringList{"com.apple.Terminal"});
    EXPECT_EQ(collapses, 1);

    setTasks({task("n8n", "n8n", {"Gmail failed"})});
    EXPECT_EQ(visibleTexts(), (QStringList{"n8n", "stopped", "Gmail failed"}));

    open(IslandView::confused);
    EXPECT_EQ(
        visibleTexts(),
        (QStringList{"Too many hits at once.", "Give me a sec — back to work in three seconds."}));
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

using CountdownBarTest = ViewFixture;

TEST_F(CountdownBarTest, ItRunsOutWithTheTimeToClose)
{
    const auto width = [bar = root->findChild<CountdownBar *>()] { return bar->barWidth(); };
    island.setView(IslandView::note);
    island.setMode(IslandMode::expanded);
    using Case = std::array<double, 3>;
    for (const auto &[interval, passed, expected] :
         {Case{5, 1.95, 0}, Case{5, 2.15, 153}, Case{5, 3.5, 80}, Case{5, 30, 0}, Case{60, 49.9, 0},
          Case{60, 50.15, 158}, Case{0, 1, 0}, Case{-3, 1, 0},
          Case{std::numeric_limits<double>::quiet_NaN(), 1, 0}}) {
        state.autoCloseInterval = interval;
        state.lastActivity = queue.mediaTime();
        queue.advance(passed);
        EXPECT_NEAR(width(), expected, 6) << interval << ' ' << passed;
    }
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it closes nothing";

    state.autoCloseInterval = 5;
    state.lastActivity = queue.mediaTime();
    state.isPinned = true;
    queue.advance(4);
    EXPECT_EQ(width(), 0);
    state.isPinned = false;
    EXPECT_NEAR(width(), 1.0 / 3 * 160, 1);
    QCoreApplication::processEvents();
    for (const int fromMiddle : {-50, -22, 0, 21, 50})
        EXPECT_EQ(picture().pixelColor(360 + fromMiddle, 159).lightness() > 60,
                  std::abs(fromMiddle) < 30)
            << fromMiddle;
    island.setMode(IslandMode::compact);
    EXPECT_EQ(width(), 0);
}

} // namespace
