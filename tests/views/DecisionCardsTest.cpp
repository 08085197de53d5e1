#include "ViewFixture.h"

#include "ui/MarkdownText.h"
#include "ui/MarkedLines.h"

#include <QJsonArray>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace tirlo;

namespace {

using Kind = RequestContent::Kind;

class ApprovalViewTest : public ViewFixture
{
protected:
    ApprovalViewTest()
    {
        setTasks({task("integration_claude", "shop")});
        open(IslandView::approval);
    }

    void ask(const RequestContent &content, const QList<StandingGrant> &grants = {})
    {
        ApprovalInfo request;
        request.content = content;
        request.grants = grants;
        setApproval({}, "integration_claude", request);
        queue.advance(2);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QString shownText() const
    {
        for (const QPlainTextEdit *box : root->findChildren<MarkedLines *>()) {
            if (box->isVisible())
                return box->toPlainText();
        }
        return {};
    }
};

TEST_F(ApprovalViewTest, ItShowsAllOfTheRequestAndGrowsOnlyAsFarAsItMust)
{
    const QString script = QString("echo line\n").repeated(30) + "rm -rf ~/Documents\nls";
    struct Case
    {
        RequestContent content;
        QString shown;
        bool grows;
    };
    for (const auto &[content, shown, grows] : {
             Case{{.title = "Run a command", .kind = Kind::command, .text = "ls"}, "ls", false},
             Case{{.title = "Run a command", .kind = Kind::command, .text = script}, script, true},
             Case{{.title = "Run a command", .kind = Kind::command, .text = QString(300, u'x')},
                  QString(300, u'x'),
                  true},
             Case{{.title = "Write a file", .subject = "/a", .kind = Kind::text, .text = "1\n2"},
                  "/a\n1\n2",
                  true},
             Case{{.title = "Edit a file",
             .subject = "/a",
             .kind = Kind::diff,
             .text = "k\nnew",
             .before = "k\nold",
             .more = "replace_all: true"},
                  "/a\nk\nold\nnew\nreplace_all: true",
                  true},
             Case{{.title = "x", .kind = Kind::fields, .text = "a\u202Eb\u00AD"}, "a�b�", false},
         }) {
        ask(content);
        EXPECT_EQ(shownText(), shown);
        EXPECT_EQ(state.cardGrowth > 0, grows) << shown.toStdString();
        EXPECT_LE(state.cardGrowth, IslandConst::mostCardGrowth);
        EXPECT_LE(placeOf(button("Allow")).bottom(), 150 + int(state.cardGrowth));
        const auto *bar = root->findChild<MarkedLines *>()->verticalScrollBar();
        EXPECT_EQ(bar->isVisible(), content.text == script) << "what does not fit scrolls";
    }
}

TEST_F(ApprovalViewTest, APlanIsRenderedWhereNothingOfItIsLost)
{
    const auto plan = [this](const QString &text) {
        ask({.title = "Approve a plan", .kind = Kind::plan, .text = text});
        EXPECT_EQ(visibleButtons(), (QStringList{"Keep planning", "Approve plan"}));
        return root->findChild<MarkdownText *>();
    };
    // A picture is never opened: this one would keep its reader waiting for ever.
    QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    MarkdownText *rendered
        = plan("# Plan\n<b>raw</b> ![p](" + pipe + ") [docs](http://127.0.0.1:9/d)\n\n```sh\ncp a b"
               + QString(200, u' ') + "; rm\n```\n" + QString("- step\n").repeated(200));
    EXPECT_TRUE(rendered->isVisible());
    const QString seen = rendered->toPlainText();
    EXPECT_TRUE(seen.startsWith("Plan\n<b>raw</b>"));
    for (const QString &hidden : {" (p " + pipe + ")", QString("docs (http://127.0.0.1:9/d)")})
        EXPECT_TRUE(seen.contains(hidden)) << seen.left(200).toStdString();
    EXPECT_LE(rendered->document()->idealWidth(), rendered->viewport()->width());

    // What rendering would take from sight, or would take long, is shown as it was written.
    for (const QString &whole :
         {QString("a\n\n> [//]: # (also rm)\n"), QString("a\n\n- [x\ny]: /z \"rm\"\n"),
          QString("```sh rm -rf\nls\n```"), QString("a &#x202E; b"),
          QString("| a |\n|---|\n| b | rm |"), QString("7. a"), QString("> ").repeated(90) + "x",
          QString("- x\n").repeated(9000), QString("[a](b) ").repeated(2000),
          QString(100'000, u'w')}) {
        EXPECT_FALSE(plan(whole)->isVisible());
        EXPECT_EQ(shownText(), whole) << whole.left(40).toStdString();
    }
}

TEST_F(ApprovalViewTest, WhatCannotAllBeShownHereCannotBeAllowedHere)
{
    struct Case
    {
        QString text;
        const char *rest;
    };
    for (const auto &[text, rest] :
         {Case{QString("\nls").repeated(19'999), "\nls\n… 10000 more lines; look in the terminal"},
          Case{QString(1'000'000, u'x'), "x\n… 880000 more characters; look in the terminal"}}) {
        ask({.title = "Run a command", .kind = Kind::command, .text = text}, {{"all", {}}});
        EXPECT_TRUE(shownText().endsWith(rest)) << shownText().right(80).toStdString();
        EXPECT_EQ(visibleButtons(), (QStringList{"In the terminal", "Deny"}));
        const QString told = visibleTexts().join('\n');
        EXPECT_TRUE(told.contains("look in the terminal") && !told.contains("Always"))
            << told.toStdString();
    }
}

using ClosedIslandTest = ViewFixture;

TEST_F(ClosedIslandTest, TheFirstRequestIsMeasuredAsItWillBeShown)
{
    setTasks({task("integration_claude", "shop")});
    setApproval(QString("word ").repeated(60), "integration_claude");
    open(IslandView::approval);
    const auto *box = root->findChild<MarkedLines *>();
    EXPECT_EQ(box->height(), box->heightOfText(1000));
}

TEST_F(ApprovalViewTest, WhatDoesNotFitTheHeadOrTheNoteScrollsWithTheContent)
{
    const RequestContent content{
        .title = QString(900, u't'), .reason = QString(900, u'r'), .subject = "/a", .text = "b"};
    ask(content, {{QString(900, u'g'), {}}});
    EXPECT_EQ(shownText(),
              content.title + "\n/a\nb\ndescription: " + content.reason
                  + "\nAlways keeps: " + QString(900, u'g'));
    EXPECT_EQ(visibleButtons(), (QStringList{"Deny", "Always", "Allow"}));

    // A project's name gives way to what is asked, and the room of what is not there is taken.
    setTasks({task("integration_claude", QString(200, u'p'))});
    ask({.title = "Run a command", .kind = Kind::command, .text = "1\n2\n3"});
    for (const auto *label : root->findChildren<QLabel *>()) {
        if (label->text() == "· Run a command" || label->text() == "3 lines") {
            EXPECT_GE(label->width(), label->sizeHint().width());
        }
    }
    ask({.title = "Run a command", .kind = Kind::command, .text = "ls"});
    EXPECT_EQ(state.cardGrowth, 0);
}

TEST_F(ApprovalViewTest, EachButtonAnswersAndAlwaysKeepsWhatItSays)
{
    const RequestContent content{.title = "Run a command", .kind = Kind::command, .text = "ls"};
    ask(content);
    EXPECT_EQ(visibleButtons(), (QStringList{"Deny", "Allow"}));
    click("Deny");
    click("Allow");
    const QJsonObject suggestion{{"type", "addRules"}};
    ask(content, {{"Bash(ls:*) in this project", suggestion}});
    EXPECT_TRUE(visibleTexts().contains("Always keeps: Bash(ls:*) in this project"));
    click("Always");
    EXPECT_EQ(decisions(), (QStringList{"deny", "allow", "always"}));
    EXPECT_EQ(answers.last().updatedPermissions, QList{suggestion});

    ask({.title = "Approve a plan", .kind = Kind::plan, .text = "# Plan"});
    click("Keep planning");
    click("Approve plan");
    EXPECT_EQ(decisions().mid(3), (QStringList{"deny", "allow"}));
}

TEST_F(ApprovalViewTest, NothingIsAnsweredBeforeItHasBeenSeen)
{
    ask({.title = "Run a command", .kind = Kind::command, .text = "ls"});
    // Another takes its place, at once or a moment after it has gone, of the same height or
    // another.
    for (const QString command : {"reboot", "rm\n-rf\n/", "ls"}) {
        if (command == "ls")
            state.pendingApproval = std::nullopt;
        setApproval(command, "integration_claude");
        for (int i = 0; i < 3; ++i) {
            queue.advance(0.1);
            click("Allow");
        }
        EXPECT_TRUE(answers.isEmpty()) << command.toStdString();
        queue.advance(2);
        click("Allow");
        EXPECT_EQ(std::exchange(answers, {}).size(), 1);
    }
    // A press that began before does not count either.
    setApproval("reboot", "integration_claude");
    queue.advance(0.2);
    const QPoint place = placeOf(button("Allow")).center();
    QTest::mousePress(root->windowHandle(), Qt::LeftButton, {}, place);
    queue.advance(2);
    QTest::mouseRelease(root->windowHandle(), Qt::LeftButton, {}, place);
    EXPECT_TRUE(answers.isEmpty());
    // The island opens on it, over whatever was there.
    island.setMode(IslandMode::compact);
    queue.advance(2);
    island.setMode(IslandMode::expanded);
    for (int i = 0; i < 8; ++i) {
        queue.advance(0.05);
        click("Allow");
    }
    EXPECT_TRUE(answers.isEmpty());
}

TEST_F(ApprovalViewTest, ItNamesWhoAsksWhateverIsInFocus)
{
    setTasks({task("integration_claude", "shop"), task("agent_codex", "harbour")});
    ApprovalInfo request;
    for (const auto &[folder, name] : {std::pair("shop", "shop"), {"api", "api"}}) {
        request.folder = folder;
        setApproval("ls", "integration_claude", request);
        open(IslandView::approval);
        state.focusId = "agent_codex";
        EXPECT_TRUE(visibleTexts().contains(name)) << name;
        EXPECT_FALSE(visibleTexts().contains("harbour"));
    }
}

TEST_F(ApprovalViewTest, ADenialMaySayWhy)
{
    ask({.title = "Run a command", .kind = Kind::command, .text = "ls"});
    QLineEdit *why = nullptr;
    for (QLineEdit *field : root->findChildren<QLineEdit *>()) {
        if (field->isVisible())
            why = field;
    }
    ASSERT_TRUE(why);
    QTest::keyClick(why, Qt::Key_Return);
    QTest::keyClicks(why, "nonsense");
    QTest::keyClick(why, Qt::Key_Escape);
    EXPECT_TRUE(why->text().isEmpty());
    EXPECT_TRUE(answers.isEmpty());
    QTest::keyClicks(why, "Use the other file");
    QTest::keyClick(why, Qt::Key_Return);
    click("Deny");
    EXPECT_EQ(decisions(), (QStringList{"deny", "deny"}));
    for (const ApprovalAnswer &answer : answers)
        EXPECT_EQ(answer.message, "Use the other file");
}

class QuestionViewTest : public ViewFixture
{
protected:
    void ask(const QList<AgentQuestion> &questions)
    {
        setTasks({task("integration_claude", "shop")});
        open(IslandView::question);
        ApprovalInfo request;
        request.questions = questions;
        request.input = {{"kept", 1}};
        setApproval({}, "integration_claude", request);
        queue.advance(2);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QJsonObject answered() const
    {
        return answers.last().updatedInput.value_or(QJsonObject()).value("answers").toObject();
    }

    [[nodiscard]] QLineEdit *ownAnswer() const
    {
        for (QLineEdit *field : root->findChildren<QLineEdit *>()) {
            if (field->isVisible())
                return field;
        }
        return nullptr;
    }
};

TEST_F(QuestionViewTest, QuestionsAreAnsweredOneAfterTheOther)
{
    ask({{.text = "Which?",
          .header = "Database",
          .options = {{"SQLite", "one file"}, {"Postgres"}}},
         {.text = "What?", .options = {{"Costs"}, {"Times"}}, .multiSelect = true},
         {.text = "Name?"}});
    EXPECT_TRUE(visibleTexts().contains("Database · 1 of 3"));
    click("Postgres");
    EXPECT_TRUE(visibleTexts().contains("2 of 3"));
    for (const char *unseen : {"Costs", "Back"})
        click(unseen);
    queue.advance(2);
    EXPECT_TRUE(visibleTexts().contains("2 of 3"));
    EXPECT_FALSE(button("Next")->isEnabled());
    click("Costs");
    QTest::keyClicks(ownAnswer(), "Risks");
    click("Back");
    queue.advance(2);
    EXPECT_TRUE(button("Postgres")->isChecked()) << "what was answered is still there";
    click("SQLite");
    queue.advance(2);
    EXPECT_TRUE(button("Costs")->isChecked());
    EXPECT_EQ(ownAnswer()->text(), "Risks");
    click("Times");
    click("Next");
    queue.advance(2);
    QTest::keyClicks(ownAnswer(), "Buoy");
    QTest::keyClick(ownAnswer(), Qt::Key_Return);
    ASSERT_EQ(decisions(), QStringList{"allow"});
    EXPECT_EQ(
        answered(),
        (QJsonObject{{"Which?", "SQLite"}, {"What?", "Costs, Times, Risks"}, {"Name?", "Buoy"}}));
    EXPECT_EQ(answers.last().updatedInput->value("kept"), 1);
}

TEST_F(QuestionViewTest, OddQuestionsCanBeReadAndGivenBack)
{
    AgentQuestion many{.text = "Many?"};
    for (int i = 0; i < 40; ++i)
        many.options.append({QString::number(i) + QString(500, u'x'), QString(500, u'y')});
    for (const AgentQuestion &question :
         {AgentQuestion{.text = QString(3000, u'q')}, many,
          AgentQuestion{.text = "Header?", .header = QString(500, u'h')},
          AgentQuestion{.text = "Twice?", .options = {{"a"}, {"a"}}},
          AgentQuestion{
              .text = "<b>Markup</b>\u202E", .header = "\u00ADh", .options = {{"<i>x"}}}}) {
        ask({question});
        EXPECT_LE(state.cardGrowth, IslandConst::mostCardGrowth);
        EXPECT_LE(placeOf(button("In the terminal")).bottom(), 150 + int(state.cardGrowth));
        click("In the terminal");
        EXPECT_EQ(decisions().last(), "ask");
    }

    // More than a card takes is answered where it was asked.
    AgentQuestion endless = many;
    for (int i = 0; i < 5000; ++i)
        endless.options.append({QString::number(i)});
    for (const AgentQuestion &question : {endless, AgentQuestion{.text = QString(900'000, u'q')}}) {
        ask({question});
        EXPECT_EQ(visibleButtons(), QStringList{"In the terminal"});
        EXPECT_TRUE(visibleTexts().join(' ').contains("look in the terminal"));
    }
}

TEST_F(QuestionViewTest, WithoutAQuestionTheAgentsOwnWordsAreShown)
{
    AgentTask asking = task("agent_gemini", "shop", {"Lit", "Shall I go on?"});
    asking.state = BotState::question;
    setTasks({asking});
    open(IslandView::question);
    EXPECT_TRUE(visibleTexts().contains("Shall I go on?"));
    EXPECT_EQ(visibleButtons(), QStringList{"Open"});
    applications.installed = {"com.apple.Terminal"};
    click("Open");
    EXPECT_EQ(applications.opened, QStringList{"com.apple.Terminal"});
    EXPECT_TRUE(answers.isEmpty());
}

} // namespace
