#include "PollerFixture.h"
#include "integrations/CalcomPoller.h"
#include "integrations/GithubPoller.h"
#include "integrations/NotionPoller.h"
#include "integrations/ResendPoller.h"
#include "integrations/ServiceAnswers.h"

#include <limits>

namespace tirlo {
namespace {

const QDateTime someDate = QDateTime::fromMSecsSinceEpoch(1773480413589);

using QuietPollersTest = PollerFixture;

TEST_F(QuietPollersTest, GithubCountsRepositoriesAndThenStars)
{
    GithubPoller poller(context);
    const std::pair<const char *, qint64> rows[] = {
        {R"({"public_repos": 3, "owned_private_repos": 4, "total_private_repos": 9})", 7},
        {R"({"public_repos": 3, "owned_private_repos": "4", "total_private_repos": 9})", 12},
        {R"({"public_repos": 3})", 3},
        {R"({"public_repos": true, "owned_private_repos": 9007199254740993})", 9007199254740993},
        {R"({"public_repos": 9223372036854775807, "owned_private_repos": 1})", 9223372036854775807},
        {"{}", 0},
    };
    for (const auto &[user, repos] : rows) {
        cycle(poller, user);
        ASSERT_TRUE(http.answer({.status = 200, .body = R"([
            {"stargazers_count": 40}, {"stargazers_count": "1"}, {}, {"stargazers_count": 2}])"}));
        EXPECT_EQ(services.githubStats.value(), (GitHubStats{repos, 42})) << user;
    }
    const Headers headers{{"Authorization", "Bearer key"},
                          {"Accept", "application/vnd.github+json"}};
    expectRequest(u"https://api.github.com/user"_s, headers);
    expectRequest(u"https://api.github.com/user/repos?per_page=100&affiliation=owner&sort=pushed"_s,
                  headers, 15);

    for (const char *body : {"{}", "[7]", "<html>", "", "[]"}) {
        cycle(poller, R"({"public_repos": 1})");
        ASSERT_TRUE(http.answer({.status = 200, .body = body}));
        const bool isList = QLatin1String(body) == "[]"_L1;
        EXPECT_EQ(services.githubStats.value(), isList ? (GitHubStats{1, 0}) : (GitHubStats{0, 42}))
            << body;
    }
    takeAddresses();
    cycle(poller, "[]");
    EXPECT_EQ(takeAddresses().size(), 1) << "without a user nobody asks for stars";
}

TEST_F(QuietPollersTest, ResendKeepsTheLatestMailsAndTheirTotal)
{
    ResendPoller poller(context);
    cycle(poller, R"({"object": "list", "has_more": false, "data": [
        {"id": "1", "to": ["a@x.y", "b@x.y"], "subject": "Hi", "last_event": "delivered",
         "created_at": "2026-03-14T09:26:53.589Z"},
        {"id": "2", "to": "c@x.y", "created_at": "2026-03-14 09:26:53"},
        {"id": "3", "to": ["d@x.y", 7], "subject": null, "last_event": 1,
         "created_at": "2026-03-14T10:26:53+01:00"},
        {"id": 4, "created_at": "2026-03-14T09:26:53Z"},
        {"id": "5"}, {"id": "6", "created_at": 1773480413}]})");

    expectRequest(u"https://api.resend.com/emails?limit=100"_s,
                  {{"Authorization", "Bearer key"}, {"Accept", "application/json"}});
    EXPECT_EQ(services.resendEmails.value(),
              (QList<ResendEmail>{
                  {"1", {"a@x.y", "b@x.y"}, "Hi", someDate, "delivered"},
                  {"2", {"c@x.y"}, "", queue.wallClock(), ""},
                  {"3", {}, "", QDateTime::fromMSecsSinceEpoch(1773480413000), ""},
              }));
    EXPECT_EQ(services.resendTotal.value(), 3);

    const std::pair<const char *, std::optional<qint64>> totals[]{
        {R"({"data": [], "total": "9", "count": 8})", 8},
        {R"({"data": [], "total": 9, "count": 8})", 9},
        {R"({"data": []})", std::nullopt}};
    for (const auto &[body, total] : totals) {
        cycle(poller, body);
        EXPECT_EQ(services.resendTotal.value(), total) << body;
        EXPECT_TRUE(services.resendEmails.value().isEmpty());
    }
    const QByteArrayList seven(7, R"({"id": "1", "created_at": "2026-03-14T09:26:53Z"})");
    cycle(poller, "{\"data\": [" + seven.join(',') + "]}");
    EXPECT_EQ(services.resendTotal.value(), 7);
    EXPECT_EQ(services.resendEmails.value().size(), 5);
}

TEST_F(QuietPollersTest, NotionKeepsPagesAndDatabases)
{
    NotionPoller poller(context);
    cycle(poller, R"({"object": "list", "results": [
        {"object": "page", "id": "1", "url": "https://www.notion.so/1",
         "last_edited_time": "2026-03-14T09:26:53.589Z",
         "icon": {"type": "emoji", "emoji": "🪑"},
         "properties": {"Done": {"type": "checkbox", "checkbox": true},
                        "Name": {"id": "title", "type": "title",
                                 "title": [{"plain_text": "Chairs"}, {"plain_text": "!"}]}}},
        {"object": "database", "id": "2", "icon": {"type": "external", "emoji": "🪑"},
         "title": [{"plain_text": "Orders"}], "last_edited_time": "yesterday"},
        {"object": "page", "id": "3", "url": 7, "icon": "🪑", "last_edited_time": 7,
         "properties": {"Name": {"type": "title", "title": []}}},
        {"object": "database", "id": "4", "title": [{"plain_text": ""}], "icon": {"type": "emoji"}},
        {"id": "5", "title": [{"plain_text": "no"}], "properties": []},
        {"object": "page", "id": 6}, {"object": "page"}]})");

    EXPECT_EQ(http.requests[0].method, "POST");
    EXPECT_EQ(QJsonDocument::fromJson(http.requests[0].body), QJsonDocument::fromJson(R"({
        "sort": {"direction": "descending", "timestamp": "last_edited_time"}, "page_size": 3})"));
    expectRequest(u"https://api.notion.com/v1/search"_s,
                  {{"Authorization", "Bearer key"},
                   {"Notion-Version", "2022-06-28"},
                   {"Content-Type", "application/json"}});

    const QDateTime now = queue.wallClock();
    EXPECT_EQ(services.notionPages.value(),
              (QList<NotionPage>{
                  {"1", "Chairs", "🪑", someDate, "https://www.notion.so/1"},
                  {"2", "Orders", {}, now, ""},
                  {"3", "Untitled", {}, now, ""},
                  {"4", "Untitled", {}, now, ""},
                  {"5", "Untitled", {}, now, ""},
              }));
    cycle(poller, R"({"results": []})");
    EXPECT_TRUE(services.notionPages.value().isEmpty());
}

TEST_F(QuietPollersTest, CalcomKeepsTheBookingsOfSixtyDays)
{
    queue.setWallClock(QDateTime(QDate(2026, 2, 14), QTime(23, 59)));
    CalcomPoller poller(context);
    cycle(poller, R"({"status": "success", "data": [
        {"id": 1, "title": "Call", "status": "pending", "start": "2026-03-14T09:26:53.589Z",
         "end": "2026-03-14T10:26:53+00:00", "description": "Bring a chair",
         "attendees": [{"name": "Ada", "email": "ada@x.y"}, null],
         "responses": {"notes": {"value": "At the door"}}},
        {"id": 9007199254740993, "startTime": "2026-03-14T09:26:53.589Z", "end": "later",
         "description": "Chair", "responses": {"notes": {"value": ""}},
         "attendees": [{"name": 7, "email": "ada@x.y"}]},
        {"id": 3, "start": 7, "startTime": "2026-03-14T09:26:53.589Z", "attendees": [],
         "end": "later", "endTime": "2026-03-14T10:26:53Z", "description": "", "responses": []},
        {"id": "4", "start": "2026-03-14T09:26:53Z"}, {"id": 5.5, "start": "2026-03-14T09:26:53Z"},
        {"id": 6, "start": "soon"}, {"id": 7}]})");

    const auto utc = [](int month, int day) {
        return QDate(2026, month, day).startOfDay().toUTC().toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
    };
    expectRequest(u"https://api.cal.com/v2/bookings?status=upcoming&start=%1&end=%2"_s.arg(
                      utc(2, 14), utc(4, 15)),
                  {{"Authorization", "Bearer key"}, {"cal-api-version", "2024-08-13"}});

    const QDateTime end = QDateTime::fromMSecsSinceEpoch(1773484013000);
    EXPECT_EQ(
        services.calcomBookings.value(),
        (QList<CalcomBooking>{
            {1, "Call", someDate, end, "pending", "Ada", "ada@x.y", "At the door"},
            {9007199254740993, "Meeting", someDate, someDate, "accepted", {}, "ada@x.y", "Chair"},
            {3, "Meeting", someDate, end, "accepted", {}, {}, {}},
        }));
}

TEST(ServiceAnswersTest, ReadsInternetDatesAndNothingElse)
{
    const std::pair<const char *, qint64> rows[]{
        {"2026-03-14T09:26:53Z", 1773480413000},
        {"2026-03-14T09:26:53.5Z", 1773480413500},
        {"2026-03-14T09:26:53.589793238462643383Z", 1773480413589},
        {"2026-03-14T10:26:53.589+01:00", 1773480413589},
        {"2026-03-14T03:56:53-0530", 1773480413000},
        {"1969-12-31T23:59:59.250Z", -750},
        {"", -1},
        {"2026-03-14T09:26:53", -1},
        {"2026-02-29T09:26:53Z", -1},
        {"2026-03-14T24:00:00Z", -1},
        {"2026-03-14T09:26:53+15:00", -1},
        {"2026-03-14T09:26:53Z\n", -1}};
    for (const auto &[text, milliseconds] : rows) {
        const auto date = isoDate(QString::fromLatin1(text));
        EXPECT_EQ(date ? date->toMSecsSinceEpoch() : -1, milliseconds) << text;
    }
}

TEST(ServiceAnswersTest, KeepsNumbersWithinWhatDatesAndSumsCanHold)
{
    EXPECT_EQ(dateSinceEpoch(-0.75).toMSecsSinceEpoch(), -750);
    EXPECT_TRUE(dateSinceEpoch(-1e300).isValid());
    EXPECT_GT(dateSinceEpoch(1e300), dateSinceEpoch(1e11));

    using Limits = std::numeric_limits<qint64>;
    EXPECT_EQ(boundedSum(Limits::max(), 1), Limits::max());
    EXPECT_EQ(boundedSum(Limits::min(), -1), Limits::min());
}

} // namespace
} // namespace tirlo
