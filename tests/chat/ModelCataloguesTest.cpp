#include "ChatFixture.h"

#include "chat/ModelCatalogues.h"
#include "chat/ModelLists.h"

using namespace tirlo;

namespace {

class ModelCataloguesTest : public ChatFixture
{
protected:
    /// Asks for the provider's list and waits for what comes of it.
    void fetch(ChatProvider provider)
    {
        catalogues.fetchModelsIfNeeded(provider);
        ASSERT_TRUE(
            waitUntil([&] { return !state.loadingProviderModels.value().contains(provider); }));
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

    ModelCatalogues catalogues{state, keychain, http, queue, hosts};
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
    providers.anthropicModels
        = json(R"([{"id":"b","display_name":"B"},{"id":"c"},{"display_name":"D"},)"
               R"({"id":7,"display_name":"E"},{"id":"a","display_name":"A"}])")
              .toArray();
    fetch(ChatProvider::anthropic);
    EXPECT_EQ(labels(ChatProvider::anthropic), (QStringList{"B", "A"}));

    providers.googleModels
        = models({"models/Gemini-B", "gemini-a", "models/Gemini-LIVE", "embedding", "imagen", "veo",
                  "AQA", "x-tts", "audio", "models/models/c"});
    fetch(ChatProvider::google);
    EXPECT_EQ(labels(ChatProvider::google), (QStringList{"Gemini-B", "gemini-a", "models/c"}));

    providers.openAIModels
        = json(R"([{"id":"tie-1"},{"id":"tts-1"},{"id":"old","created":5},{"id":"Whisper"},)"
               R"({"id":"text","created":"9"},{"id":"half","created":9.5},{"id":"DALL-E-3"},)"
               R"({"id":"flag","created":true},{"id":"New","created":1.7e9},)"
               R"({"id":"omni-moderation"},{"id":"tie-2","created":0}])")
              .toArray();
    fetch(ChatProvider::openai);
    EXPECT_EQ(labels(ChatProvider::openai),
              (QStringList{"New", "old", "tie-1", "text", "half", "flag", "tie-2"}));
}

TEST_F(ModelCataloguesTest, AModelThatIsGoneGivesWayToTheUsualOneOfTheList)
{
    const struct
    {
        ChatProvider provider;
        QJsonArray &list;
        QProperty<QString> &chosen;
        QString usual;
    } rows[] = {
        {ChatProvider::anthropic, providers.anthropicModels, state.claudeModel, "sonnet"},
        {ChatProvider::google, providers.googleModels, state.googleChatModel, "flash"},
        {ChatProvider::openai, providers.openAIModels, state.openAIChatModel, "mini"},
    };
    for (const auto &row : rows) {
        const auto chosenFrom = [&](const QStringList &ids) {
            row.list = models(ids);
            row.chosen = "mine";
            state.fetchedProviderModels = QMap<ChatProvider, QList<ProviderModel>>();
            fetch(row.provider);
            return row.chosen.value();
        };
        const QString shouted = row.usual.toUpper();
        EXPECT_EQ(chosenFrom({"a", row.usual + "-2", row.usual + "-1", "mine"}), "mine");
        EXPECT_EQ(chosenFrom({"a", shouted, row.usual + "-2", row.usual + "-1"}), row.usual + "-2");
        EXPECT_EQ(chosenFrom({"b", shouted, "a"}), "b");
    }
    for (const char *key : {"claudeModel", "googleChatModel", "openAIChatModel"})
        EXPECT_EQ(std::get<QString>(*store.value(key)), "b") << key;
}

TEST_F(ModelCataloguesTest, AnyFailureIsOneErrorUntilTheNextTry)
{
    const LoopbackAnswer rows[] = {
        {.status = 201, .body = R"({"data":[{"id":"a"}]})"},
        {.body = "<html></html>"},
        {.body = R"([{"id":"a"}])"},
        {.body = R"({"data":[{"id":"a"},"b"]})"},
        {.body = R"({"data":[]})"},
        {.body = R"({"data":[{"id":"a"}]})", .manner = LoopbackManner::stopsHalfway},
    };
    const auto provider = ChatProvider::openai;
    for (const LoopbackAnswer &answer : rows) {
        server(provider).answers = {answer};
        fetch(provider);
        EXPECT_EQ(error(provider), "Failed to load models. Check your API key.");
        EXPECT_FALSE(state.fetchedProviderModels.value().contains(provider));
    }
    server(provider).answers = {{.manner = LoopbackManner::hangs}};
    const std::size_t before = server(provider).requests.size();
    catalogues.fetchModelsIfNeeded(provider);
    EXPECT_EQ(error(provider), "");
    ASSERT_TRUE(waitUntil([&] { return server(provider).requests.size() > before; }));
    queue.advance(9.5);
    EXPECT_TRUE(state.loadingProviderModels.value().contains(provider));
    queue.advance(1);
    EXPECT_NE(error(provider), "");
    fetch(provider);
    EXPECT_EQ(error(provider), "");
}

TEST_F(ModelCataloguesTest, AListIsFetchedOnceAndNotWithoutAKey)
{
    for (const auto provider : allCases<ChatProvider>()) {
        keychain.set(rawText(provider) + "-api-key", "");
        catalogues.fetchModelsIfNeeded(provider);
        EXPECT_EQ(error(provider), "No API key — add it in Settings.");
        EXPECT_EQ(server(provider).connections, 0);

        keychain.set(rawText(provider) + "-api-key", providers.key);
        catalogues.fetchModelsIfNeeded(provider);
        fetch(provider);
        fetch(provider);
        EXPECT_EQ(server(provider).requests.size(), 1u);
        EXPECT_EQ(error(provider), "");
    }
}

TEST_F(ModelCataloguesTest, ALongListIsFetchedOnceTheKeysAreThere)
{
    KeychainStore late(secrets);
    ModelCatalogues waiting(state, late, http, queue, hosts);
    QStringList ids;
    while (ids.size() < 5000)
        ids.append("gpt-" + QString::number(ids.size()).repeated(10));
    providers.openAIModels = models(ids);
    waiting.fetchModelsIfNeeded(ChatProvider::openai);
    EXPECT_EQ(error(ChatProvider::openai), "");
    late.load();
    ASSERT_TRUE(waitUntil([&] { return !labels(ChatProvider::openai).isEmpty(); }));
    EXPECT_EQ(labels(ChatProvider::openai), ids);
}

} // namespace
