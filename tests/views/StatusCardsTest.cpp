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

TEST_F(StatusCardsTest, EachCardTellsItsTextsAndTheSamplesDoNothing)
{
    struct Case
    {
        IslandView view;
        QStringList texts;
        QStringList buttons;
    };
    const QString shop = QStringLiteral("shop");
    for (const auto &[view, texts, buttons] :
         {Case{IslandView::question,
               {shop, QStringLiteral("Claude Code is asking a question"),
                QStringLiteral("Which search engine to use?")},
               {QStringLiteral("Postgres full-text"), QStringLiteral("Meilisearch"),
                QStringLiteral("Algolia")}},
          Case{IslandView::error,
               {shop, QStringLiteral("n8n"), QStringLiteral("Workflow stopped."),
                QStringLiteral("Gmail node timed out after 30s. Retry or open n8n.")},
               {QStringLiteral("Retry"), QStringLiteral("Open in n8n")}},
          Case{IslandView::confused,
               {QStringLiteral("Too many hits at once."),
                QStringLiteral("Give me a sec — back to work in three seconds.")},
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
    const QString label = QStringLiteral("Claude Code finished");
    EXPECT_EQ(visibleTexts(), (QStringList{shop, label, QStringLiteral("Teste · npm test")}));
    state.editTask(QStringLiteral("a"), [](AgentTask &edited) { edited.steps.clear(); });
    const QString without = QStringLiteral("Session finished");
    EXPECT_EQ(visibleTexts(), (QStringList{shop, label, without}));
    setTasks({});
    EXPECT_EQ(visibleTexts(), (QStringList{label, without}));

    open(IslandView::empty);
    click(QStringLiteral("Ask Claude"));
    EXPECT_EQ(state.view.value(), IslandView::prompt);
    state.noteMessage = QStringLiteral("Handled in VS Code.");
    open(IslandView::note);
    EXPECT_EQ(visibleTexts(), QStringList{QStringLiteral("Handled in VS Code.")});
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

    applications.alive = {terminal};
    click(QStringLiteral("Dismiss"));
    EXPECT_EQ(collapses, 4);
    EXPECT_EQ(applications.activated.size(), 2U) << "dismissing does nothing else";
}

} // namespace

} // namespace tirlo
