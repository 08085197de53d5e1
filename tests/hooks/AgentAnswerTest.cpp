#include "HookFixture.h"
#include "hooks/AgentQuestions.h"
#include "hooks/ApprovalReply.h"
#include "hooks/StandingGrants.h"

#include <QJsonArray>

namespace tirlo {
namespace {

QStringList grantsOf(const QByteArray &suggestions)
{
    QStringList words;
    for (const StandingGrant &grant :
         standingGrants(json(("{\"permission_suggestions\":" + suggestions + "}").constData())))
        words.append(grant.words);
    return words;
}

TEST(StandingGrants, SayInWordsWhatWouldBeKept)
{
    const std::pair<const char *, QStringList> rows[] = {
        {R"([{"type":"addRules","behavior":"allow","destination":"localSettings","rules":[
              {"toolName":"Bash","ruleContent":"touch:*"},{"toolName":"WebFetch"}]}])",
         {u"Bash(touch:*), all of WebFetch in this project, for you"_s}},
        {R"([{"type":"addDirectories","directories":["/a\n/b"],"destination":"session"},
             {"type":"addDirectories","directories":["/c","/d"],"destination":"userSettings"},
             {"type":"addDirectories","directories":["/c","/d"],"destination":"userSettings"}])",
         {u"the folder /a⏎/b in this session"_s, u"the folders /c, /d everywhere"_s}},
        {R"([{"type":"setMode","mode":"acceptEdits","destination":"session"}])",
         {u"accept edits in this session"_s}},
        // Whatever is not understood in every part is not kept.
        {R"([{"type":"setMode","mode":"acceptEdits","destination":"userSettings"},
             {"type":"setMode","mode":"bypassPermissions","destination":"session"},
             {"type":"addRules","behavior":"deny","destination":"session","rules":[{"toolName":"A"}]},
             {"type":"addRules","behavior":"allow","destination":"session","rules":[]},
             {"type":"addRules","behavior":"allow","destination":"session","rules":[{"toolName":"A"},
              {"toolName":"B","ruleContent":7}]},
             {"type":"addRules","behavior":"allow","destination":"session","rules":[{"toolName":"A",
              "until":"x"}]},
             {"type":"addRules","behavior":"allow","destination":"moon","rules":[{"toolName":"A"}]},
             {"type":"addDirectories","directories":["/a",7],"destination":"session"},
             {"type":"addDirectories","directories":[],"destination":"session"},
             {"type":"addDirectories","directories":["/a"],"destination":"session","mode":"x"},
             {"type":"removeRules","destination":"session"}, 7, {}, null])",
         {}},
        {R"({"type":"setMode","mode":"acceptEdits","destination":"session"})", {}},
    };
    for (const auto &[suggestions, words] : rows)
        EXPECT_EQ(grantsOf(suggestions), words);
}

QList<AgentQuestion> questionsOf(const QJsonArray &questions)
{
    return agentQuestions({{u"tool_name"_s, u"AskUserQuestion"_s},
                           {u"tool_input"_s, QJsonObject{{u"questions"_s, questions}}}});
}

TEST(AgentQuestions, AreReadWithTheirOptions)
{
    const QJsonObject asked = json(R"({"question":"Which?","header":"DB","multiSelect":true,
        "options":[{"label":"A","description":"one"},{"label":"A","description":"two"},"B",
                   {"description":"none"},{"label":7},{"label":" "},null]})");
    EXPECT_EQ(
        questionsOf({asked, json(R"({"question":"Open?","options":7,"multiSelect":"yes"})")}),
        (QList<AgentQuestion>{{u"Which?"_s, u"DB"_s, {{u"A"_s, u"one"_s}, {u"B"_s, {}}}, true},
                              {u"Open?"_s, {}, {}, false}}));

    QJsonArray options;
    for (int i = 0; i < 40; ++i)
        options.append(QJsonObject{{u"label"_s, QString::number(i) + QString(500, u'x')}});
    const auto many = questionsOf({QJsonObject{{u"question"_s, u"?"_s}, {u"options"_s, options}}});
    ASSERT_EQ(many.value(0).options.size(), 40);
    EXPECT_EQ(many[0].options[39].label.size(), 502);

    // Answers go by the text.
    EXPECT_TRUE(questionsOf({asked, json(R"({"header":"x"})")}).isEmpty());
    EXPECT_TRUE(questionsOf({asked, asked}).isEmpty());
    EXPECT_TRUE(questionsOf({asked, 7}).isEmpty());
    EXPECT_TRUE(agentQuestions({{u"tool_name"_s, u"AskUserQuestion"_s}}).isEmpty());
    EXPECT_TRUE(
        agentQuestions({{u"tool_input"_s, QJsonObject{{u"questions"_s, QJsonArray{asked}}}}})
            .isEmpty());
}

TEST(ApprovalReply, SaysWhatBelongsToTheDecision)
{
    const QJsonObject input
        = answeredInput(json(R"({"q":[1]})"), {{u"Which?"_s, {u"A"_s, u"B"_s}}, {u"Open?"_s, {}}});
    EXPECT_EQ(input, json(R"({"q":[1],"answers":{"Which?":"A, B"}})"));

    const QList<QJsonObject> kept{json(R"({"type":"x"})")};
    const std::pair<Decision, const char *> rows[] = {
        {Decision::allow, R"({"permissionDecision":"allow","updatedInput":{}})"},
        {Decision::always,
         R"({"permissionDecision":"always","updatedInput":{},"updatedPermissions":[{"type":"x"}]})"},
        {Decision::deny, R"({"message":"no","permissionDecision":"deny"})"},
        {Decision::ask, R"({"permissionDecision":"ask"})"},
    };
    for (const auto &[decision, line] : rows)
        EXPECT_EQ(replyLine({decision, u"no"_s, QJsonObject(), kept}), line);
    EXPECT_EQ(replyLine({Decision::always}),
              R"({"permissionDecision":"always","updatedPermissions":[]})");
    EXPECT_EQ(replyLine({Decision::deny}), R"({"permissionDecision":"deny"})");
}

} // namespace
} // namespace tirlo
