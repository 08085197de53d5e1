#include "ChatFixture.h"

#include "chat/ProviderSwitch.h"
#include "support/RecordingSoundEngine.h"

#include <thread>

using namespace tirlo;

namespace {

using Claude = ChatFixture;

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
    EXPECT_FALSE(state.chatHistory.value().last().id.isNull());
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
    EXPECT_EQ(body["tools"],
              json(R"([{"type":"web_search_20250305","name":"web_search",)"
                   R"("max_uses":5}])"));
    const QJsonArray content{text(windowText), text("Where am I?")};
    EXPECT_EQ(body["messages"], (QJsonArray{QJsonObject{{"role", "user"}, {"content", content}}}))
        << str(body["messages"]);
}

TEST_F(Claude, AnswersGoBackUnchangedAndLaterQuestionsCarryNoContext)
{
    const QJsonValue answer = json(R"([{"type":"server_tool_use","id":"s1","input":{"n":1.5}},
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

TEST_F(Claude, EveryFailureHasItsWordsAndItsTranscript)
{
    state.claudeModel = " claude-sonnet-4-6\n";
    const auto anthropic = ChatProvider::anthropic;
    const auto openai = ChatProvider::openai;
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
    const struct
    {
        ChatProvider provider;
        int status;
        QByteArrayList bodies;
        QString note;
        /// Whose turns stand in the transcript when the next question has been put.
        std::string roles = "u";
        LoopbackManner manner = LoopbackManner::whole;
    } rows[] = {
        {anthropic, 404, {gone}, goneNote},
        {anthropic, 529, {R"({"error":{"type":"overloaded_error","message":"Busy"}})"}, "Busy"},
        {anthropic, 201, {html}, html},
        {anthropic, 400, {odd}, odd},
        {anthropic, 400, {"\xff\xfe"}, "unknown error"},
        {anthropic, 200, {html}, lost, "u", LoopbackManner::resets},
        {anthropic, 200, noContent, "Unexpected API response.", "uu"},
        {anthropic, 200, noText, "No response text.", "uau"},
        {openai, 429, {R"({"error":{"message":"Slow \"down\""}})"}, "Slow \"down\""},
        {openai, 400, noMessage, "HTTP 400"},
        {openai, 201, {answer}, "HTTP 201"},
        {openai, 200, {answer}, lost, "u", LoopbackManner::stopsBetweenChunks},
        {openai, 200, noChoice, "Unexpected response format"},
    };
    for (const auto &row : rows) {
        for (const QByteArray &body : row.bodies) {
            SCOPED_TRACE(body.toStdString());
            service.emplace(state, notifications, island, keychain, http, queue, hosts);
            emotes.clear();
            state.chatProvider = row.provider;
            server(row.provider).answers
                = {{.status = row.status, .body = body, .manner = row.manner}};
            ask("Question");
            EXPECT_EQ(note(), row.note);
            EXPECT_TRUE(emotes.isEmpty());
            ask("Again");
            EXPECT_EQ(note(), "");
            EXPECT_EQ(roles(messages(row.provider)), row.roles);
        }
    }
}

TEST_F(Claude, AHangingProviderIsGivenUpInItsOwnTime)
{
    const std::pair<ChatProvider, double> limits[]
        = {{ChatProvider::anthropic, 45}, {ChatProvider::google, 30}, {ChatProvider::openai, 30}};
    for (const auto &[provider, seconds] : limits) {
        state.chatProvider = provider;
        server(provider).answers = {{.manner = LoopbackManner::hangs}};
        island.setView(IslandView::searching);
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
    const QJsonObject first{{"role", "user"}, {"content", windowText + "\n\nAgain"}};
    EXPECT_EQ(messages(ChatProvider::openai), QJsonArray{first});
}

TEST_F(Claude, TheModelGoesOutAsChosenOrAsUsual)
{
    for (const auto &[chosen, sent] :
         {std::pair(" mo\"del\\ ", "mo\"del\\"), std::pair(" \n", "claude-sonnet-4-6")}) {
        state.claudeModel = chosen;
        ask("Question");
        EXPECT_EQ(ProviderStandIn::lastBody(providers.anthropic)["model"], sent);
    }
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
    EXPECT_EQ(roles(messages(ChatProvider::anthropic)), "uau") << "the failed one is gone";
    EXPECT_EQ(state.chatHistory.value().size(), 2);
}

TEST_F(Claude, AConversationGoesOnOverChangesOfProvider)
{
    const auto turnTo = [&](ChatProvider provider) {
        switchChatProvider(provider, state, notifications, island, sounds);
    };
    ask("One", window);
    service->chat("Two", std::nullopt);
    turnTo(ChatProvider::google);
    ASSERT_TRUE(waitUntil([this] { return state.chatHistory.value().size() == 2; }));
    EXPECT_EQ(providers.google.connections, 0) << "the provider changed with a question under way";
    ask("Three", window);
    EXPECT_EQ(messages(ChatProvider::google).first().toObject()["content"], windowText)
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
    service.emplace(state, notifications, island, late, http, queue, hosts);
    island.setView(IslandView::searching);
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
    for (const auto provider : {ChatProvider::anthropic, ChatProvider::openai}) {
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
