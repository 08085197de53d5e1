#include "integrations/N8nPoller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_n8n"_s;
const QByteArray detailOf = R"({"workflowData": {"name": "Orders"}})";

struct N8nPollerTest : PollerFixture
{
    /// Answers the request that waits; status 0 stands for a connection that failed.
    void answer(int status, const QByteArray &body = {})
    {
        HttpReply reply{.status = status, .body = body};
        if (status == 0)
            reply.error = u"Offline."_s;
        ASSERT_TRUE(http.answer(reply));
    }

    /// Runs a cycle in which the first list address tells of this execution.
    void cycleWith(const QByteArray &execution)
    {
        poller.poll();
        answer(200, "{\"data\": [" + execution + "], \"nextCursor\": null}");
    }

    /// The steps that the pill takes from an execution with this detail.
    QStringList stepsFor(const QByteArray &status, const QByteArray &detail)
    {
        cycleWith("{\"id\": " + QByteArray::number(++lastId) + R"(, "status": ")" + status + "\"}");
        answer(200, detail);
        return task(pillId).steps;
    }

    N8nPoller poller{context};
    int lastId = 0;
};

TEST_F(N8nPollerTest, SaysInItsLogWhatItDoes)
{
    activate(pillId);
    cycleWith(R"({"id": 41, "finished": true, "status": "success"})");
    answer(200, R"({"name": "Or\nders", "workflowData": {"name": 7}})");
    const Headers headers{{"X-N8N-API-KEY", "key"}, {"Accept", "application/json"}};
    expectRequest(u"http://n8n.test/api/v1/executions?limit=1&includeData=false"_s, headers);
    expectRequest(u"http://n8n.test/api/v1/executions/41?includeData=true"_s, headers);
    EXPECT_EQ(takeLogLines(),
              QStringList({"Polling http://n8n.test/api/v1/executions?limit=1&includeData=false",
                           "New execution id=41 status=success", "Parsed: Or\\u000Aders"}));
    EXPECT_EQ(task(pillId).steps, QStringList("Or\nders"));
    EXPECT_EQ(task(pillId).state, BotState::finished);
    EXPECT_EQ(sounds.played, QStringList("finish"));
    EXPECT_EQ(reveals, 0);
    queue.advance(60);
    EXPECT_EQ(task(pillId).state, BotState::idle);
}

TEST_F(N8nPollerTest, TakesAListInEveryShapeAndStopsAtWhatItCannotUse)
{
    const auto polling = u"Polling http://n8n.test/api/v1/executions?limit=1&includeData=false"_s;
    const struct
    {
        const char *body;
        QString line;
    } rows[] = {
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
    activate(pillId);
    for (const auto &row : rows) {
        sounds.played.clear();
        poller.poll();
        answer(200, row.body);
        EXPECT_EQ(takeLogLines(), QStringList({polling, row.line})) << row.body;
        if (http.answer({.status = 200, .body = detailOf})) {
            EXPECT_EQ(sounds.played.size(), 1) << row.body;
            EXPECT_TRUE(takeLogLines().contains(u"Parsed: Orders"_s)) << row.body;
        } else {
            EXPECT_TRUE(sounds.played.isEmpty()) << row.body;
        }
    }
    EXPECT_EQ(task(pillId).state, BotState::error) << "of all of them only success is one";
}

TEST_F(N8nPollerTest, GoesThroughItsAddressesUntilOneAnswers)
{
    activate(pillId);
    poller.poll();
    answer(401, "denied");
    answer(0);
    EXPECT_FALSE(http.answer({}));
    EXPECT_EQ(takeLogLines(),
              QStringList({"Polling http://n8n.test/api/v1/executions?limit=1&includeData=false",
                           "HTTP 401 6 bytes",
                           "Polling http://n8n.test/rest/executions?limit=1&includeData=false",
                           "Network error: Offline.", "All list endpoints failed"}));

    http.requests.clear();
    poller.poll();
    answer(404);
    answer(200, R"([{"id": "a/7?", "status": "success"}])");
    answer(0);
    answer(200, "<html>");
    answer(403);
    answer(500);
    EXPECT_FALSE(http.answer({}));
    EXPECT_EQ(takeAddresses(),
              QStringList({"http://n8n.test/api/v1/executions?limit=1&includeData=false",
                           "http://n8n.test/rest/executions?limit=1&includeData=false",
                           "http://n8n.test/api/v1/executions/a%2F7%3F?includeData=true",
                           "http://n8n.test/api/v1/executions/a%2F7%3F",
                           "http://n8n.test/rest/executions/a%2F7%3F?includeData=true",
                           "http://n8n.test/rest/executions/a%2F7%3F"}));
    EXPECT_EQ(takeLogLines().mid(3),
              QStringList(
                  {"New execution id=a/7? status=success", "Detail HTTP 403", "Detail HTTP 500"}));
    EXPECT_EQ(task(pillId).steps, QStringList("Workflow"));
    EXPECT_EQ(sounds.played, QStringList("finish"));
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
        poller.poll();
        answer(200, "[]");
        EXPECT_EQ(takeAddresses(),
                  QStringList(base + u"/api/v1/executions?limit=1&includeData=false"_s));
    }
    takeLogLines();
    for (const char *url : {"https://n8n.test/ ", "http://[x"}) {
        keychain.set(u"n8n-url"_s, QString::fromLatin1(url));
        poller.poll();
        EXPECT_EQ(takeLogLines(), QStringList("All list endpoints failed")) << url;
    }
    for (const QString &missing : {u"n8n-url"_s, u"n8n-api-key"_s}) {
        keychain.set(u"n8n-url"_s, u"https://n8n.test"_s);
        keychain.set(missing, QString());
        poller.poll();
        EXPECT_EQ(takeLogLines(), QStringList("No API key or URL configured"));
    }
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(N8nPollerTest, DigestsTheLastNodesOutput)
{
    activate(pillId);
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
    };
    for (const auto &[body, digest] : rows)
        EXPECT_EQ(stepsFor("success", body), QStringList({"Orders", digest})) << body.constData();

    const QByteArray without[] = {
        R"({"name": "Orders"})",
        R"({"name": "Orders", "data": {"resultData": []}})",
        detail(R"({"lastNodeExecuted": 7, "runData": {}})"),
        detail(R"({"lastNodeExecuted": "A", "runData": {"B": [{"data": {"main": [[]]}}]}})"),
        detail(R"({"lastNodeExecuted": "A", "runData": {"A": {"data": {"main": [[]]}}}})"),
        output("[]"),
        output("[[], 7]"),
        output("{}"),
    };
    for (const QByteArray &body : without)
        EXPECT_EQ(stepsFor("success", body), QStringList("Orders")) << body.constData();
}

TEST_F(N8nPollerTest, AListThatComesBeforeTheDetailDoesNotMakeTheNewsOld)
{
    activate(pillId);
    cycleWith(R"({"id": 1, "status": "success"})");
    poller.poll();
    ASSERT_TRUE(http.answer({.status = 200, .body = R"([{"id": 1, "status": "success"}])"}, 1));
    answer(200, detailOf);
    EXPECT_EQ(task(pillId).steps, QStringList("Orders"));
}

TEST_F(N8nPollerTest, DigestsTheError)
{
    activate(pillId);
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
        EXPECT_EQ(task(pillId).state, BotState::error);
    }
    EXPECT_TRUE(sounds.played.removeAll(u"error"_s) && sounds.played.isEmpty());
}

TEST_F(N8nPollerTest, AFilteredExecutionIsSpent)
{
    activate(pillId);
    state.n8nWorkflowFilter = QSet<QString>{u"Invoices"_s};
    cycleWith(R"({"id": 1, "status": "running"})");
    cycleWith(R"({"id": 1, "status": "success"})");
    answer(200, detailOf);
    EXPECT_TRUE(sounds.played.isEmpty());

    state.n8nWorkflowFilter = QSet<QString>();
    cycleWith(R"({"id": 1, "status": "success"})");
    EXPECT_FALSE(http.answer({}));

    cycleWith(R"({"id": 2, "status": "running"})");
    cycleWith(R"({"id": 2, "status": "success"})");
    answer(200, detailOf);
    EXPECT_EQ(task(pillId).steps, QStringList("Orders"));
}

} // namespace
} // namespace tirlo
