#include "ChatFixture.h"

#include "chat/ProviderSwitch.h"
#include "support/RecordingSoundEngine.h"

#include <thread>

using namespace tirlo;

namespace {

using Claude = ChatFixture;

const WindowContext window{"Editor", "main.cpp", "https://example.org/a?b"};

QJsonObject text(const QString &words)
{
    return {{"type", "text"}, {"text", words}};
}

/// "uaua": whose turns the messages are.
std::string roles(const QJsonArray &messages)
{
    std::string roles;
    for (const QJsonValue &message : messages)
        roles += message["role"].toString().toStdString().substr(0, 1);
    return roles;
}

TEST_F(Claude, AsksWithKeyToolsPromptAndContextFirst)
{
    ask("Where am I?", window);
    EXPECT_EQ(lastAnswer(), "You said: Where am I?");
    EXPECT_EQ(state.chatHistory.value().last().role, ChatRole::assistant);
    EXPECT_FALSE(state.chatHistory.value().last().id.isNull());
    EXPECT_EQ(state.view, IslandView::prompt);
    EXPECT_EQ(state.stateOverride.value(), std::nullopt);
    EXPECT_EQ(emotes, QStringList{"happy"});

    const LoopbackRequest &seen = providers.anthropic.requests.at(0);
    EXPECT_EQ(seen.method, "POST");
    EXPECT_EQ(seen.target, "/v1/messages");
    EXPECT_EQ(seen.header("x-api-key"), "sk-right");
    EXPECT_EQ(seen.header("anthropic-version"), "2023-06-01");
    EXPECT_EQ(seen.header("content-type"), "application/json");
    EXPECT_EQ(seen.header("anthropic-beta"), "web-search-2025-03-05");

    const QJsonObject body = ProviderStandIn::lastBody(providers.anthropic);
    EXPECT_EQ(body.keys(), (QStringList{"max_tokens", "messages", "model", "system", "tools"}));
    EXPECT_EQ(body["model"], "claude-sonnet-4-6");
    EXPECT_EQ(body["max_tokens"], 4096);
    EXPECT_EQ(body["system"].toString().toUtf8().size(), 408);
    EXPECT_EQ(body["tools"],
              json(R"([{"type":"web_search_20250305","name":"web_search",)"
                   R"("max_uses":5}])"));
    const QJsonArray content{
        text("Context — App: Editor, Window: main.cpp, URL: https://example.org/a?b"),
        text("Where am I?")};
    EXPECT_EQ(body["messages"], (QJsonArray{QJsonObject{{"role", "user"}, {"content", content}}}))
        << str(body["messages"]);
}

TEST_F(Claude, AnswersGoBackUnchangedAndLaterQuestionsCarryNoContext)
{
    const QJsonValue answer = json(R"([{"type":"server_tool_use","id":"s1","input":{"n":1.5}},
        {"type":"web_search_tool_result","content":[{"encrypted_content":"x=="}]},
        {"type":"text","text":" \n first piece\n"},{"type":"text","text":"second piece"}])");
    providers.anthropic.answers
        = {{.body = QJsonDocument(QJsonObject{{"content", answer}}).toJson()}};
    ask("One");
    EXPECT_EQ(lastAnswer(), "first piece");
    ask("Two", window);

    const QJsonArray sent = messages(ChatProvider::anthropic);
    EXPECT_EQ(roles(sent), "uau");
    EXPECT_EQ(sent[1].toObject()["content"], answer) << str(sent[1]);
    EXPECT_EQ(sent[2].toObject()["content"], QJsonArray{text("Two")}) << str(sent[2]);
}

TEST_F(Claude, EveryFailureOfAnthropicHasItsWordsAndItsTranscript)
{
    state.claudeModel = " claude-sonnet-4-6\n";
    struct Row
    {
        LoopbackAnswer answer;
        QString note;
        /// Whose turns stand in the transcript when the next question has been put.
        std::string roles;
    };
    const auto refused
        = [](const QByteArray &body) { return LoopbackAnswer{.status = 400, .body = body}; };
    const auto fine = [](const QByteArray &body) { return LoopbackAnswer{.body = body}; };
    const QString unexpected = "Unexpected API response.";
    const QString empty = "No response text.";
    const QString lost = "The connection to the server was lost.";
    const QByteArray html = "<html><body>Bad gateway</body></html>";
    const Row rows[] = {
        {refused(R"({"error":{"type":"not_found_error","message":"model: x"}})"),
         "Model not found:  claude-sonnet-4-6\n. Pick another one in Settings.", "u"},
        {refused(R"({"error":{"type":"overloaded_error","message":"Overloaded"}})"), "Overloaded",
         "u"},
        {{.status = 201, .body = html}, QString(html), "u"},
        {refused(R"({"error":"flat"})"), R"({"error":"flat"})", "u"},
        {refused(R"({"error":{"type":7,"message":"m"}})"), R"({"error":{"type":7,"message":"m"}})",
         "u"},
        {refused("\xff\xfe"), "unknown error", "u"},
        {{.manner = LoopbackManner::resets}, lost, "u"},
        {{.body = QByteArray(1 << 20, 'x'), .manner = LoopbackManner::endless},
         "The server's answer is too long.",
         "u"},
        {{.body = R"({"content":[{"type":"text","text":"x"}]})",
          .manner = LoopbackManner::stopsBetweenChunks},
         lost,
         "u"},
        {fine(html), unexpected, "uu"},
        {fine("[]"), unexpected, "uu"},
        {fine(R"({"content":"text"})"), unexpected, "uu"},
        {fine(R"({"content":[{"type":"text","text":"x"},7]})"), unexpected, "uu"},
        {fine(R"({"content":[{"type":"tool_use"},{"type":"thinking"}]})"), empty, "uau"},
        {fine(R"({"content":[{"type":"text"},{"type":"text","text":"x"}]})"), empty, "uau"},
        {fine(R"({"content":[{"type":"text","text":""}]})"), empty, "uau"},
    };
    for (const Row &row : rows) {
        service.emplace(state, notifications, keychain, http, queue, hosts);
        emotes.clear();
        providers.anthropic.answers = {row.answer};
        ask("Question");
        EXPECT_EQ(note(), row.note);
        EXPECT_TRUE(emotes.isEmpty());
        ask("Again");
        EXPECT_EQ(note(), "") << row.note.toStdString();
        EXPECT_EQ(roles(messages(ChatProvider::anthropic)), row.roles) << row.note.toStdString();
    }
}

TEST_F(Claude, EveryFailureOfTheOthersHasItsWordsAndTakesTheTurnBack)
{
    struct Row
    {
        LoopbackAnswer answer;
        QString note;
    };
    const auto fine = [](const QByteArray &body) { return LoopbackAnswer{.body = body}; };
    const QString unexpected = "Unexpected response format";
    const QString lost = "The connection to the server was lost.";
    const Row rows[] = {
        {{.status = 429, .body = R"({"error":{"message":"Slow \"down\""}})"}, "Slow \"down\""},
        {{.status = 400, .body = R"([{"error":{"message":"in a list"}}])"}, "HTTP 400"},
        {{.status = 500, .body = R"({"error":{"message":7}})"}, "HTTP 500"},
        {{.status = 502, .body = "<html>Bad gateway</html>"}, "HTTP 502"},
        {{.status = 201, .body = R"({"choices":[{"message":{"content":"x"}}]})"}, "HTTP 201"},
        {{.manner = LoopbackManner::resets}, lost},
        {{.body = R"({"choices":[{"message":{"content":"x"}}]})",
          .manner = LoopbackManner::stopsBetweenChunks},
         lost},
        {fine("<html></html>"), unexpected},
        {fine(R"({"choices":[]})"), unexpected},
        {fine(R"({"choices":{"0":{"message":{"content":"x"}}}})"), unexpected},
        {fine(R"({"choices":[{"message":"x"}]})"), unexpected},
        {fine(R"({"choices":[{"message":{"content":null}}]})"), unexpected},
        {fine(R"({"choices":[{"message":{"content":["x"]}}]})"), unexpected},
    };
    state.chatProvider = ChatProvider::openai;
    for (const Row &row : rows) {
        service.emplace(state, notifications, keychain, http, queue, hosts);
        providers.openai.answers = {row.answer};
        ask("Question");
        EXPECT_EQ(note(), row.note);
        ask("Again");
        EXPECT_EQ(note(), "") << row.note.toStdString();
        EXPECT_EQ(roles(messages(ChatProvider::openai)), "u") << row.note.toStdString();
    }
}

TEST_F(Claude, AHangingProviderIsGivenUpInItsOwnTime)
{
    const std::pair<ChatProvider, double> limits[]
        = {{ChatProvider::anthropic, 45}, {ChatProvider::google, 30}, {ChatProvider::openai, 30}};
    for (const auto &[provider, seconds] : limits) {
        state.chatProvider = provider;
        server(provider).answers = {{.manner = LoopbackManner::hangs}};
        state.view = IslandView::searching;
        service->chat("Question", std::nullopt);
        ASSERT_TRUE(waitUntil([&] { return !server(provider).requests.empty(); }));
        queue.advance(seconds - 0.5);
        EXPECT_EQ(state.view, IslandView::searching);
        queue.advance(1);
        ASSERT_TRUE(waitUntil([&] { return state.view == IslandView::note; }));
        EXPECT_EQ(note(), "The request timed out.");
    }
}

TEST_F(Claude, WithoutAKeyNothingIsSentAndNothingRemembered)
{
    const std::pair<ChatProvider, QString> words[]
        = {{ChatProvider::anthropic, "API key missing. Open settings."},
           {ChatProvider::google, "Google API key missing. Configure it in Settings."},
           {ChatProvider::openai, "OpenAI API key missing. Configure it in Settings."}};
    for (const auto &[provider, missing] : words) {
        state.chatProvider = provider;
        keychain.set(rawText(provider) + "-api-key", "");
        ask("Question");
        EXPECT_EQ(note(), missing);
        EXPECT_EQ(server(provider).connections, 0);
        keychain.set(rawText(provider) + "-api-key", providers.key);
    }
    ask("Again", window);
    EXPECT_EQ(messages(ChatProvider::openai),
              (QJsonArray{QJsonObject{{"role", "user"},
                                      {"content",
                                       "Context — App: Editor, Window: main.cpp, URL: "
                                       "https://example.org/a?b\n\nAgain"}}}));
}

TEST_F(Claude, TheModelGoesOutAsChosenOrAsUsual)
{
    state.claudeModel = " mo\"del\\ ";
    ask("Question");
    EXPECT_EQ(ProviderStandIn::lastBody(providers.anthropic)["model"], "mo\"del\\");
    state.claudeModel = " \n";
    ask("Question");
    EXPECT_EQ(ProviderStandIn::lastBody(providers.anthropic)["model"], "claude-sonnet-4-6");

    state.chatProvider = ChatProvider::openai;
    state.openAIChatModel = " \"quoted\" ";
    ask("Question");
    EXPECT_EQ(ProviderStandIn::lastBody(providers.openai)["model"], " \"quoted\" ");
}

TEST_F(Claude, TwoQuestionsAtOnceKeepTheirOwnTurns)
{
    providers.anthropic.answers = {{.status = 500, .body = "down"}};
    service->chat("One", std::nullopt);
    service->chat("Two", std::nullopt);
    ASSERT_TRUE(waitUntil(
        [this] { return state.chatHistory.value().size() == 1 && state.noteMessage.value(); }));
    ASSERT_EQ(providers.anthropic.requests.size(), 2u);
    ask("Three");
    const QJsonArray sent = messages(ChatProvider::anthropic);
    EXPECT_EQ(roles(sent), "uau") << "the failed one is gone";
    EXPECT_EQ(state.chatHistory.value().size(), 2);
}

TEST_F(Claude, AConversationGoesOnOverChangesOfProvider)
{
    RecordingSoundEngine sounds;
    const auto turnTo = [&](ChatProvider provider) {
        switchChatProvider(provider, state, notifications, sounds);
    };
    ask("One", window);
    service->chat("Two", std::nullopt);
    turnTo(ChatProvider::google);
    ASSERT_TRUE(waitUntil([this] { return state.chatHistory.value().size() == 2; }));
    EXPECT_EQ(providers.google.connections, 0) << "the provider changed with a question under way";
    ask("Three", window);
    EXPECT_EQ(messages(ChatProvider::google).first().toObject()["content"],
              "Context — App: Editor, Window: main.cpp, URL: https://example.org/a?b")
        << "of several texts the first one is sent";
    turnTo(ChatProvider::openai);
    ask("Four");
    turnTo(ChatProvider::anthropic);
    ask("Five");

    EXPECT_EQ(note(), "");
    const QJsonArray sent = messages(ChatProvider::anthropic);
    EXPECT_EQ(roles(sent), "uauauauau");
    EXPECT_TRUE(sent[0].toObject()["content"].isArray());
    EXPECT_EQ(sent[4].toObject()["content"], "Three");
    EXPECT_EQ(sent[7].toObject()["content"], "You said: Four");
    EXPECT_EQ(sent[8].toObject()["content"], QJsonArray{text("Five")});
    EXPECT_EQ(state.chatHistory.value().size(), 5);

    providers.answers = {" \n\t ", ""};
    ask("Six");
    turnTo(ChatProvider::openai);
    ask("Seven");
    EXPECT_EQ(note(), "") << "blank answers are answers";
    EXPECT_EQ(state.chatHistory.value().size(), 7);
}

TEST_F(Claude, AQuestionWaitsForTheKeys)
{
    KeychainStore late(secrets);
    service.emplace(state, notifications, late, http, queue, hosts);
    state.view = IslandView::searching;
    service->chat("One", std::nullopt);
    queue.drain();
    EXPECT_EQ(state.view, IslandView::searching);
    std::thread([&] { late.load(); }).join();
    ASSERT_TRUE(waitUntil([this] { return state.view != IslandView::searching; }));
    EXPECT_EQ(lastAnswer(), "You said: One");
}

TEST_F(Claude, AServiceThatGoesLeavesNoOneToAnswer)
{
    providers.anthropic.answers = {{.manner = LoopbackManner::hangs}};
    service->chat("One", std::nullopt);
    ASSERT_TRUE(waitUntil([this] { return !providers.anthropic.requests.empty(); }));
    service->chat("Two", std::nullopt);
    service.reset();
    queue.advance(60);
    EXPECT_TRUE(state.chatHistory.value().isEmpty());
    EXPECT_EQ(state.noteMessage.value(), std::nullopt);
}

TEST_F(Claude, ChoosingTheProviderInUseOnlyShowsThePrompt)
{
    RecordingSoundEngine sounds;
    switchChatProvider(ChatProvider::anthropic, state, notifications, sounds);
    EXPECT_EQ(state.view, IslandView::prompt);
    EXPECT_TRUE(sounds.played.isEmpty());
    EXPECT_TRUE(emotes.isEmpty());

    state.view = IslandView::note;
    switchChatProvider(ChatProvider::openai, state, notifications, sounds);
    EXPECT_EQ(state.view, IslandView::prompt);
    EXPECT_EQ(state.chatProvider, ChatProvider::openai);
    EXPECT_EQ(std::get<QString>(*settings.value("chatProvider")), "openai");
    EXPECT_EQ(sounds.played, QStringList{"pop"});
    EXPECT_EQ(emotes, QStringList{"surprised"});
}

} // namespace
