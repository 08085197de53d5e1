#include "ChatFixture.h"

#include "chat/ProviderSwitch.h"

#include <thread>
#include <tuple>

using namespace tirlo;

namespace {

using Claude = ChatFixture;
using enum ChatProvider;

const WindowContext window{"Editor", "main.cpp", "https://example.org/a?b"};
const QString windowText = "Context — App: Editor, Window: main.cpp, URL: https://example.org/a?b";

QJsonObject text(const QString &words)
{
    return {{"type", "text"}, {"text", words}};
}

/// "uaua": whose turns the messages are.
std::string roles(const QJsonArray &messages)
{
    std::string roles;
    for (const QJsonValue &message : messages)
        roles += message["role"].toString().front().toLatin1();
    return roles;
}

TEST_F(Claude, AsksWithKeyToolsPromptAndContextFirst)
{
    ask("Where am I?", window);
    EXPECT_EQ(lastAnswer(), "You said: Where am I?");
    EXPECT_EQ(state.chatHistory.value().last().role, ChatRole::assistant);
    EXPECT_EQ(emotes, QStringList{"happy"});

    const HttpRequest &seen = web.requests.at(0);
    EXPECT_EQ(seen.url.toString(), "https://api.anthropic.com/v1/messages");
    for (const auto &[name, value] : {std::pair("anthropic-version", "2023-06-01"),
                                      {"content-type", "application/json"},
                                      {"anthropic-beta", "web-search-2025-03-05"}})
        EXPECT_TRUE(seen.headers.contains(std::pair(QByteArray(name), QByteArray(value)))) << name;
    const QJsonObject body = web.lastBody();
    EXPECT_EQ(body.keys(), (QStringList{"max_tokens", "messages", "model", "system", "tools"}));
    EXPECT_EQ(body["max_tokens"], 4096);
    EXPECT_EQ(body["tools"],
              json(R"([{"type":"web_search_20250305","name":"web_search","max_uses":5}])"));
    const QJsonArray content{text(windowText), text("Where am I?")};
    EXPECT_EQ(body["messages"], (QJsonArray{QJsonObject{{"role", "user"}, {"content", content}}}));
}

TEST_F(Claude, AnswersGoBackUnchangedAndLaterQuestionsCarryNoContext)
{
    const QJsonValue answer = json(R"([{"type":"server_tool_use","id":"s1","input":{"n":1.5}},
        {"type":"text","text":" \n first piece\n"},{"type":"text","text":"second piece"}])");
    web.replies = {{.status = 200, .body = FakeProviders::textOf({{"content", answer}})}};
    ask("One");
    EXPECT_EQ(lastAnswer(), "first piece");
    ask("Two", window);
    EXPECT_EQ(roles(messages()), "uau");
    EXPECT_EQ(messages()[1].toObject()["content"], answer);
    EXPECT_EQ(messages()[2].toObject()["content"], QJsonArray{text("Two")});
}

TEST_F(Claude, EveryFailureHasItsWordsAndItsTranscript)
{
    state.claudeModel = " claude-sonnet-4-6\n";
    const QString lost = "The connection to the server was lost.";
    const QByteArray html = "<html>Bad gateway</html>";
    const QByteArray answer = R"({"choices":[{"message":{"content":"x"}}]})";
    const QByteArray odd = R"({"error":{"type":7,"message":"m"}})";
    const QByteArray gone = R"({"error":{"type":"not_found_error","message":"model: x"}})";
    const QString goneNote = "Model not found:  claude-sonnet-4-6\n. Pick another one in Settings.";
    const QByteArrayList noContent{html, R"({"content":"text"})",
                                   R"({"content":[{"type":"text","text":"x"},7]})"};
    const QByteArrayList noText{R"({"content":[{"type":"tool_use"}]})",
                                R"({"content":[{"type":"text"},{"type":"text","text":"x"}]})",
                                R"({"content":[{"type":"text","text":""}]})"};
    const QByteArrayList noMessage{R"([{"error":{"message":"in a list"}}])",
                                   R"({"error":{"message":7}})", html};
    const QByteArrayList noChoice{html, R"({"choices":[]})", R"({"choices":[{"message":"x"}]})",
                                  R"({"choices":{"0":{"message":{"content":"x"}}}})",
                                  R"({"choices":[{"message":{"content":["x"]}}]})"};
    // The last: whose turns stand in the transcript when the next question has been put.
    const std::tuple<ChatProvider, int, QByteArrayList, QString, std::string> rows[] = {
        {anthropic, 404, {gone}, goneNote, "u"},
        {anthropic,
         529,
         {R"({"error":{"type":"overloaded_error","message":"Busy"}})"},
         "Busy",
         "u"},
        {anthropic, 201, {html}, html, "u"},
        {anthropic, 400, {odd}, odd, "u"},
        {anthropic, 400, {"\xff\xfe"}, "unknown error", "u"},
        {anthropic, 0, {""}, lost, "u"},
        {anthropic, 200, noContent, "Unexpected API response.", "uu"},
        {anthropic, 200, noText, "No response text.", "uau"},
        {openai, 429, {R"({"error":{"message":"Slow \"down\""}})"}, "Slow \"down\"", "u"},
        {openai, 400, noMessage, "HTTP 400", "u"},
        {openai, 201, {answer}, "HTTP 201", "u"},
        {openai, 0, {""}, lost, "u"},
        {openai, 200, noChoice, "Unexpected response format", "u"},
    };
    for (const auto &[provider, status, bodies, told, turns] : rows) {
        for (const QByteArray &body : bodies) {
            SCOPED_TRACE(body.toStdString());
            restart();
            emotes.clear();
            state.chatProvider = provider;
            web.replies = {{status, body, status ? QString() : lost}};
            ask("Question");
            EXPECT_EQ(note(), told);
            EXPECT_TRUE(emotes.isEmpty());
            ask("Again");
            EXPECT_EQ(note(), "");
            EXPECT_EQ(roles(messages()), turns);
        }
    }
}

TEST_F(Claude, WithoutAKeyNothingIsSentAndNothingRemembered)
{
    const std::pair<ChatProvider, QString> words[]
        = {{anthropic, "API key missing. Open settings."},
           {google, "Google API key missing. Configure it in Settings."},
           {openai, "OpenAI API key missing. Configure it in Settings."}};
    for (const auto &[provider, missing] : words) {
        state.chatProvider = provider;
        setKey(provider, "");
        ask("Question");
        EXPECT_EQ(note(), missing);
    }
    EXPECT_TRUE(web.requests.empty());
    setKey(openai, "sk-right");
    ask("Again", window);
    const QJsonObject first{{"role", "user"}, {"content", windowText + "\n\nAgain"}};
    EXPECT_EQ(messages(), QJsonArray{first});
}

TEST_F(Claude, TheModelAndTheTimeToAnswerAreThoseOfTheProvider)
{
    const std::tuple<ChatProvider, QString, QString, double> rows[]
        = {{anthropic, " mo\"del\\ ", "mo\"del\\", 45},
           {anthropic, " \n", "claude-sonnet-4-6", 45},
           {google, "flash", "flash", 30},
           {openai, " \"quoted\" ", " \"quoted\" ", 30}};
    for (const auto &[provider, chosen, sent, seconds] : rows) {
        state.chatProvider = provider;
        state.claudeModel = chosen;
        state.googleChatModel = chosen;
        state.openAIChatModel = chosen;
        ask("Question");
        EXPECT_EQ(web.lastBody()["model"], sent);
        EXPECT_EQ(web.requests.back().timeout, seconds);
    }
}

TEST_F(Claude, TwoQuestionsAtOnceKeepTheirOwnTurns)
{
    web.replies = {{.status = 500, .body = "down"}};
    service->chat("One", std::nullopt);
    service->chat("Two", std::nullopt);
    ASSERT_TRUE(eventually(
        [this] { return state.chatHistory.value().size() == 1 && state.noteMessage.value(); }));
    ask("Three");
    EXPECT_EQ(roles(messages()), "uau") << "the failed one is gone";
    EXPECT_EQ(state.chatHistory.value().size(), 2);
}

TEST_F(Claude, AConversationGoesOnOverChangesOfProvider)
{
    ask("One", window);
    service->chat("Two", std::nullopt);
    state.chatProvider = google;
    ASSERT_TRUE(eventually([this] { return state.chatHistory.value().size() == 2; }));
    EXPECT_EQ(web.requests.back().url.host(), "api.anthropic.com")
        << "the provider changed with a question under way";
    ask("Three", window);
    EXPECT_EQ(messages().first().toObject()["content"], windowText)
        << "of several texts the first one is sent";
    web.replies = {{.status = 200, .body = R"({"choices":[{"message":{"content":" \n\t "}}]})"}};
    ask("Four");
    EXPECT_EQ(note(), "") << "a blank answer is an answer";
    state.chatProvider = anthropic;
    ask("Five");
    EXPECT_EQ(roles(messages()), "uauauauau");
    EXPECT_TRUE(messages()[0].toObject()["content"].isArray());
    EXPECT_EQ(messages()[4].toObject()["content"], "Three");
    EXPECT_EQ(messages()[5].toObject()["content"], "You said: Three");
    EXPECT_EQ(messages()[8].toObject()["content"], QJsonArray{text("Five")});
    EXPECT_EQ(state.chatHistory.value().size(), 5);
}

TEST_F(Claude, AQuestionWaitsForTheKeys)
{
    KeychainStore late(secrets);
    service.emplace(state, notifications, island, late, web, queue, ProviderHosts());
    island.setView(IslandView::searching);
    service->chat("One", std::nullopt);
    queue.drain();
    EXPECT_EQ(state.view, IslandView::searching);
    std::thread([&] { late.load(); }).join();
    ASSERT_TRUE(eventually([this] { return state.view != IslandView::searching; }));
    EXPECT_EQ(lastAnswer(), "You said: One");
}

TEST_F(Claude, AServiceThatGoesLeavesNoOneToAnswer)
{
    web.hangs = true;
    service->chat("One", std::nullopt);
    ASSERT_TRUE(eventually([this] { return !web.requests.empty(); }));
    service->chat("Two", std::nullopt);
    service.reset();
    queue.drain();
    EXPECT_TRUE(state.chatHistory.value().isEmpty());
    EXPECT_EQ(state.noteMessage.value(), std::nullopt);
}

TEST_F(Claude, ChoosingTheProviderInUseOnlyShowsThePrompt)
{
    for (const auto provider : {anthropic, openai}) {
        EXPECT_TRUE(sounds.played.isEmpty() && emotes.isEmpty());
        island.setView(IslandView::note);
        switchChatProvider(provider, state, notifications, island, sounds);
        EXPECT_EQ(state.view, IslandView::prompt);
        EXPECT_EQ(state.chatProvider, provider);
    }
    EXPECT_EQ(sounds.played, QStringList{"pop"});
    EXPECT_EQ(emotes, QStringList{"surprised"});
}

} // namespace
