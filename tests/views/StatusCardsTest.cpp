#include "ViewFixture.h"

#include <QTest>

namespace tirlo {

namespace {

RunningApplication application(const char *bundleIdentifier, std::int64_t processId = 1)
{
    return {.processId = processId,
            .bundleIdentifier = QString::fromLatin1(bundleIdentifier),
            .name = {}};
}

class StatusCardsTest : public ViewFixture
{
protected:
    StatusCardsTest()
    {
        setTasks({task(QStringLiteral("a"), QStringLiteral("shop"),
                       {QStringLiteral("Lit"), QStringLiteral("Teste · npm test")})});
        QObject::connect(&notifications, &Notifications::islandCollapse, &notifications,
                         [this] { ++collapses; });
    }

    int collapses = 0;
};

TEST_F(StatusCardsTest, SampleCardsShowTheirTextsAndDoNothing)
{
    open(IslandView::question);
    EXPECT_EQ(
        visibleTexts(),
        (QStringList{QStringLiteral("shop"), QStringLiteral("Claude Code is asking a question"),
                     QStringLiteral("Which search engine to use?")}));
    for (const char *answer : {"Postgres full-text", "Meilisearch", "Algolia"})
        click(QString::fromLatin1(answer));
    EXPECT_EQ(state.view.value(), IslandView::question);

    open(IslandView::error);
    EXPECT_EQ(visibleTexts(),
              (QStringList{QStringLiteral("shop"), QStringLiteral("n8n"),
                           QStringLiteral("Workflow stopped."),
                           QStringLiteral("Gmail node timed out after 30s. Retry or open n8n.")}));
    click(QStringLiteral("Retry"));
    click(QStringLiteral("Open in n8n"));
    EXPECT_EQ(state.view.value(), IslandView::error);
    EXPECT_EQ(collapses, 0);

    open(IslandView::confused);
    EXPECT_EQ(visibleTexts(),
              (QStringList{QStringLiteral("Too many hits at once."),
                           QStringLiteral("Give me a sec — back to work in three seconds.")}));
}

TEST_F(StatusCardsTest, FinishedTellsTheLastStep)
{
    open(IslandView::finished);
    EXPECT_EQ(visibleTexts(),
              (QStringList{QStringLiteral("shop"), QStringLiteral("Claude Code finished"),
                           QStringLiteral("Teste · npm test")}));
    state.editTask(QStringLiteral("a"), [](AgentTask &edited) { edited.steps.clear(); });
    EXPECT_EQ(visibleTexts().last(), QStringLiteral("Session finished"));
    setTasks({});
    EXPECT_EQ(
        visibleTexts(),
        (QStringList{QStringLiteral("Claude Code finished"), QStringLiteral("Session finished")}));
}

TEST_F(StatusCardsTest, OpenTerminalTakesTheMostPreferredThatRuns)
{
    open(IslandView::finished);
    const RunningApplication kitty = application("net.kovidgoyal.kitty", 1);
    const RunningApplication iTerm = application("com.googlecode.iterm2", 2);
    const RunningApplication terminal = application("com.apple.Terminal", 3);
    applications.installed = {QStringLiteral("com.apple.Terminal")};

    applications.alive = {application("com.microsoft.VSCode"), kitty, iTerm, terminal};
    click(QStringLiteral("Open terminal"));
    applications.alive = {kitty};
    click(QStringLiteral("Open terminal"));
    EXPECT_EQ(applications.activated, (std::vector{terminal, kitty}));
    EXPECT_TRUE(applications.opened.isEmpty());

    applications.alive = {application("com.microsoft.VSCode")};
    click(QStringLiteral("Open terminal"));
    EXPECT_EQ(applications.opened, QStringList{QStringLiteral("com.apple.Terminal")});
    EXPECT_EQ(collapses, 3) << "the island goes either way";
}

TEST_F(StatusCardsTest, DismissingOnlyClosesTheIsland)
{
    open(IslandView::finished);
    applications.alive = {application("com.apple.Terminal")};
    click(QStringLiteral("Dismiss"));
    EXPECT_EQ(collapses, 1);
    EXPECT_TRUE(applications.activated.empty());
}

} // namespace

} // namespace tirlo
