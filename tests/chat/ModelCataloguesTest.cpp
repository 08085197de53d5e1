#include "ChatFixture.h"

#include "chat/ModelCatalogues.h"

using namespace tirlo;

namespace {

using enum ChatProvider;

struct ModelCataloguesTest : ChatFixture
{
    /// Asks for the provider's list and waits for what comes of it.
    void fetch(ChatProvider provider)
    {
        catalogues.fetchModelsIfNeeded(provider);
        ASSERT_TRUE(
            eventually([&] { return !state.loadingProviderModels.value().contains(provider); }));
    }

    [[nodiscard]] QStringList labels(ChatProvider provider) const
    {
        QStringList labels;
        for (const ProviderModel &model : state.fetchedProviderModels.value().value(provider))
            labels.append(model.label);
        return labels;
    }

    [[nodiscard]] QString error(ChatProvider provider) const
    {
        return state.providerModelFetchError.value().value(provider);
    }

    ModelCatalogues catalogues{state, keychain, web, queue, ProviderHosts()};
};

QJsonArray models(const QStringList &ids)
{
    QJsonArray models;
    for (const QString &id : ids)
        models.append(QJsonObject{{"id", id}, {"display_name", id.toUpper()}});
    return models;
}

TEST_F(ModelCataloguesTest, ListsAreFilteredAndOrdered)
{
    const struct
    {
        ChatProvider provider;
        QJsonValue list;
        QStringList labels;
    } rows[] = {
        {anthropic,
         json(R"([{"id":"b","display_name":"B"},{"id":"c"},{"display_name":"D"},
                  {"id":7,"display_name":"E"},{"id":"a","display_name":"A"}])"),
         {"B", "A"}},
        {google,
         models({"models/Gemini-B", "gemini-a", "models/Gemini-LIVE", "embedding", "imagen", "veo",
                 "AQA", "x-tts", "audio", "models/models/c"}),
         {"Gemini-B", "gemini-a", "models/c"}},
        {openai,
         json(R"([{"id":"tie-1"},{"id":"tts-1"},{"id":"old","created":5},{"id":"Whisper"},
                  {"id":"text","created":"9"},{"id":"half","created":9.5},{"id":"DALL-E-3"},
                  {"id":"flag","created":true},{"id":"New","created":1.7e9},
                  {"id":"omni-moderation"},{"id":"tie-2","created":0}])"),
         {"New", "old", "tie-1", "text", "half", "flag", "tie-2"}},
    };
    for (const auto &row : rows) {
        web.models = row.list.toArray();
        fetch(row.provider);
        EXPECT_EQ(labels(row.provider), row.labels);
    }
}

TEST_F(ModelCataloguesTest, AModelThatIsGoneGivesWayToTheUsualOneOfTheList)
{
    const struct
    {
        ChatProvider provider;
        QProperty<QString> &chosen;
        QString usual;
    } rows[] = {{anthropic, state.claudeModel, "sonnet"},
                {google, state.googleChatModel, "flash"},
                {openai, state.openAIChatModel, "mini"}};
    for (const auto &row : rows) {
        const auto chosenFrom = [&](const QStringList &ids) {
            web.models = models(ids);
            row.chosen = "mine";
            state.fetchedProviderModels = QMap<ChatProvider, QList<ProviderModel>>();
            fetch(row.provider);
            return row.chosen.value();
        };
        const QString first = row.usual + "-2", second = row.usual + "-1";
        EXPECT_EQ(chosenFrom({"a", first, second, "mine"}), "mine");
        EXPECT_EQ(chosenFrom({"a", row.usual.toUpper(), first, second}), first);
        EXPECT_EQ(chosenFrom({"b", row.usual.toUpper(), "a"}), "b");
    }
}

TEST_F(ModelCataloguesTest, AnyFailureIsOneErrorUntilTheNextTry)
{
    const QByteArray list = R"({"data":[{"id":"a"}]})";
    for (const HttpReply &reply : {HttpReply{201, list},
                                   {200, "<html></html>"},
                                   {200, R"([{"id":"a"}])"},
                                   {200, R"({"data":[{"id":"a"},"b"]})"},
                                   {200, R"({"data":[]})"},
                                   {0, "", "Cut off."}}) {
        web.replies = {reply};
        fetch(openai);
        EXPECT_EQ(error(openai), "Failed to load models. Check your API key.");
        EXPECT_FALSE(state.fetchedProviderModels.value().contains(openai));
    }
    web.models = models({"a"});
    fetch(openai);
    EXPECT_EQ(error(openai), "");
}

TEST_F(ModelCataloguesTest, AListIsFetchedOnceAndNotWithoutAKey)
{
    web.models = models({"a"});
    for (const auto provider : allCases<ChatProvider>()) {
        setKey(provider, "");
        catalogues.fetchModelsIfNeeded(provider);
        EXPECT_EQ(error(provider), "No API key — add it in Settings.");
        setKey(provider, "sk-right");
        web.requests.clear();
        for (int i = 0; i < 3; ++i)
            fetch(provider);
        EXPECT_EQ(web.requests.size(), 1u);
        EXPECT_EQ(web.requests[0].timeout, 10);
        EXPECT_EQ(error(provider), "");
    }
}

TEST_F(ModelCataloguesTest, AListIsFetchedOnceTheKeysAreThere)
{
    KeychainStore late(secrets);
    ModelCatalogues waiting(state, late, web, queue, ProviderHosts());
    waiting.fetchModelsIfNeeded(openai);
    EXPECT_EQ(error(openai), "");
    late.load();
    EXPECT_TRUE(eventually([&] { return !web.requests.empty(); }));
}

} // namespace
