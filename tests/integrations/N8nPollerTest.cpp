#include "integrations/N8nPoller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_n8n"_s;
const QByteArray detailOf = R"({"workflowData": {"name": "Orders"}})";
const auto polling = u"Polling http://n8n.test/api/v1/executions?limit=1&includeData=false"_s;
const auto pollingInternal = u"Polling http://n8n.test/rest/executions?limit=1&includeData=false"_s;

struct N8nPollerTest : PollerFixture
{
    N8nPollerTest() { activate(pillId); }

    /// Answers the requests that wait, in order; status 0 stands for a broken connection.
    void answer(const QList<std::pair<int, QByteArray>> &answers)
    {
        for (const auto &[status, body] : answers)
            ASSERT_TRUE(http.answer({status, body, status == 0 ? u"Offline."_s : QString()}));
    }

    /// Runs a cycle whose requests are answered like this.
    void cycle(const QList<std::pair<int, QByteArray>> &answers)
    {
        poller.poll();
        answer(answers);
    }

    /// The steps that the pill takes from a new execution with this detail.
    QStringList stepsFor(const QByteArray &status, const QByteArray &detail)
    {
        cycle({{200,
                "[{\"id\": " + QByteArray::number(++lastId) + R"(, "status": ")" + status + "\"}]"},
               {200, detail}});
        return task(pillId).steps;
    }

    N8nPoller poller{context};
    int lastId = 0;
};

TEST_F(N8nPollerTest, TakesAListInEveryShapeAndStopsAtWhatItCannotUse)
{
    const std::pair<const char *, QString> rows[] = {
        {R"({"data": {"results": []}})", "Unexpected response shape"},
        {"[]", "No executions found"},
        {R"({"data": []})", "No executions found"},
        {R"([{"status": "success"}])", "No id in execution"},
        {R"([{"id": 1.5, "status": "success"}])", "No id in execution"},
        {R"([{"id": "a1", "status": "running"}])", "id=a1 status=running — not terminal"},
        {R"([{"id": "a1", "status": 1}])", "id=a1 status=? — not terminal"},
        {R"([{"id": "a1", "status": "success"}])", "New execution id=a1 status=success"},
        {R"([{"id": "a1", "status": "error"}])", "Same id=a1 — no change"},
        {R"([{"id": 36893488147419103233, "status": "crashed"}])",
         "New execution id=36893488147419103233 status=crashed"},
        {R"([{"id": "36893488147419103233", "status": "error"}])",
         "Same id=36893488147419103233 — no change"},
        {R"({"data": [{"id": 1, "status": "canceled"}, {"id": 2}]})",
         "New execution id=1 status=canceled"},
        {R"([{"id": 2, "status": "failed"}])", "New execution id=2 status=failed"},
    };
    for (const auto &[body, line] : rows) {
        cycle({{200, body}});
        EXPECT_EQ(takeLogLines(), QStringList({polling, line})) << body;
        const bool isNew = line.startsWith("New"_L1);
        EXPECT_EQ(http.answer({.status = 200, .body = detailOf}), isNew) << body;
        EXPECT_EQ(takeLogLines(), isNew ? QStringList("Parsed: Orders") : QStringList()) << body;
        EXPECT_EQ(std::exchange(sound.played, {}).size(), isNew ? 1 : 0) << body;
    }
    EXPECT_EQ(task(pillId).state, BotState::error) << "of all of them only success is one";
    const Headers headers{{"X-N8N-API-KEY", "key"}, {"Accept", "application/json"}};
    expectRequest(polling.mid(8), headers);
}

TEST_F(N8nPollerTest, GoesThroughItsAddressesUntilOneAnswers)
{
    cycle({{401, "denied"}, {0, ""}});
    EXPECT_EQ(takeLogLines(),
              QStringList({polling, "HTTP 401 6 bytes", pollingInternal, "Network error: Offline.",
                           "All list endpoints failed"}));
    takeAddresses();
    cycle({{404, ""},
           {200, R"([{"id": "a/7?", "status": "success"}])"},
           {0, ""},
           {200, "<html>"},
           {403, ""},
           {500, ""}});
    EXPECT_FALSE(http.answer({}));
    EXPECT_EQ(takeAddresses().mid(1),
              QStringList({pollingInternal.mid(8),
                           "http://n8n.test/api/v1/executions/a%2F7%3F?includeData=true",
                           "http://n8n.test/api/v1/executions/a%2F7%3F",
                           "http://n8n.test/rest/executions/a%2F7%3F?includeData=true",
                           "http://n8n.test/rest/executions/a%2F7%3F"}));
    EXPECT_EQ(takeLogLines().mid(3),
              QStringList(
                  {"New execution id=a/7? status=success", "Detail HTTP 403", "Detail HTTP 500"}));
    EXPECT_EQ(task(pillId).steps, QStringList("Workflow"));
    EXPECT_EQ(sound.played, QStringList("finish"));
    EXPECT_EQ(reveals, 0);
    queue.advance(60);
    EXPECT_EQ(task(pillId).state, BotState::idle);
}

TEST_F(N8nPollerTest, TakesTheUsersAddressAsItIsButForSlashesAtItsEnds)
{
    const std::pair<QString, QString> rows[] = {
        {"//https://n8n.test:5678///", "https://n8n.test:5678"},
        {"https://n8n.test/team/n8n/", "https://n8n.test/team/n8n"},
        {"n8n.test", "n8n.test"},
    };
    for (const auto &[url, base] : rows) {
        keychain.set(u"n8n-url"_s, url);
        cycle({{200, "[]"}});
        EXPECT_EQ(takeAddresses(),
                  QStringList(base + u"/api/v1/executions?limit=1&includeData=false"_s));
    }
    takeLogLines();
    for (const auto &[item, value, line] :
         {std::array{"n8n-url", "https://n8n.test/ ", "All list endpoints failed"},
          {"n8n-url", "http://[x", "All list endpoints failed"},
          {"n8n-url", "", "No API key or URL configured"},
          {"n8n-api-key", "", "No API key or URL configured"}}) {
        keychain.set(u"n8n-url"_s, u"https://n8n.test"_s);
        keychain.set(item, value);
        poller.poll();
        EXPECT_EQ(takeLogLines(), QStringList(line)) << value;
    }
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(N8nPollerTest, DigestsTheLastNodesOutput)
{
    const auto detail = [](const QByteArray &resultData) {
        return "{\"name\": \"Orders\", \"data\": {\"resultData\": " + resultData + "}}";
    };
    const auto output = [&](const QByteArray &main) {
        return detail(R"({"lastNodeExecuted": "Send mail", "runData": {"Start": [],
                          "Send mail": [{"data": {"main": )"
                      + main + "}}]}}");
    };
    const QString fifty = u"é"_s.repeated(50);
    const std::pair<QByteArray, QString> rows[] = {
        {output("[[{}]]"), "→ Send mail · 1 item"},
        {output(R"([[{"json": {}}]])"), "→ Send mail · 1 item"},
        {output(R"([["x", {"json": {"a": 1}}]])"), "→ Send mail · 2 items"},
        {output(R"([[{"json": {"zeta": 9007199254740993, "a": [1, [2], 3], "m": {"x": 1},
                                "b": null, "hidden": 5}}]])"),
         "→ Send mail · 1 item\nzeta: 9007199254740993\na: [3]\nm: {…}\nb: null"},
        {output(("[[{\"json\": {\"t\": \"" + fifty + "tail\", \"n\": -0.50, \"y\": true, \"1\": 0."
                 + u"3"_s.repeated(5000) + "}}]]")
                    .toUtf8()),
         u"→ Send mail · 1 item\nt: "_s + fifty + u"\nn: -0.50\ny: true\n1: 0."_s
             + u"3"_s.repeated(48)},
        {R"({"name": "Orders"})", {}},
        {R"({"name": "Orders", "workflowData": {"name": 7}, "data": {"resultData": []}})", {}},
        {detail(R"({"lastNodeExecuted": 7, "runData": {}})"), {}},
        {detail(R"({"lastNodeExecuted": "A", "runData": {"B": [{"data": {"main": [[]]}}]}})"), {}},
        {detail(R"({"lastNodeExecuted": "A", "runData": {"A": {"data": {"main": [[]]}}}})"), {}},
        {output("[]"), {}},
        {output("[[], 7]"), {}},
        {output("{}"), {}},
    };
    for (const auto &[body, digest] : rows) {
        const QStringList steps{"Orders", digest};
        EXPECT_EQ(stepsFor("success", body), digest.isEmpty() ? steps.first(1) : steps)
            << body.constData();
    }
}

TEST_F(N8nPollerTest, DigestsTheError)
{
    const std::pair<QByteArray, QStringList> rows[] = {
        {R"({"error": {"message": "Late", "node": {"name": "Gmail"}}})", {"W", "Gmail\nLate"}},
        {R"({"error": {"message": "Late", "node": {"name": ""}}})", {"W", "Late"}},
        {R"({"error": {"message": "Late", "node": "Gmail"}, "runData": {}})", {"W", "Late"}},
        {R"({"error": {"node": {"name": "Gmail"}}})", {"W", "Gmail\n"}},
        {R"({"error": "no", "runData": {
              "Z": [{"error": {"message": 7}}], "Y": {}, "X": [], "W": [7],
              "M": [{"data": 1, "error": {"message": "First"}}],
              "A": [{"error": {"message": "Second"}}]}})",
         {"W", "M\nFirst"}},
        {R"({"runData": {"M": [{}, {"error": {"message": "Later run"}}]}})", {"W"}},
    };
    for (const auto &[resultData, steps] : rows) {
        const QByteArray body = R"({"name": "W", "data": {"resultData": )" + resultData + "}}";
        EXPECT_EQ(stepsFor("crashed", body), steps) << resultData.constData();
    }
}

TEST_F(N8nPollerTest, AListThatComesBeforeTheDetailDoesNotMakeTheNewsOld)
{
    const QByteArray list = R"([{"id": 1, "status": "success"}])";
    cycle({{200, list}});
    poller.poll();
    ASSERT_TRUE(http.answer({.status = 200, .body = list}, 1));
    answer({{200, detailOf}});
    EXPECT_EQ(task(pillId).steps, QStringList("Orders"));
}

TEST_F(N8nPollerTest, AFilteredExecutionIsSpent)
{
    state.n8nWorkflowFilter = QSet<QString>{u"Invoices"_s};
    EXPECT_EQ(stepsFor("success", detailOf), QStringList());
    EXPECT_TRUE(sound.played.isEmpty());
    state.n8nWorkflowFilter = QSet<QString>();
    cycle({{200, R"([{"id": 1, "status": "success"}])"}});
    EXPECT_FALSE(http.answer({}));
}

} // namespace
} // namespace tirlo
