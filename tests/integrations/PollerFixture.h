#pragma once

#include "core/KeychainStore.h"
#include "core/ServiceData.h"
#include "integrations/Poller.h"
#include "support/FakeHttpClient.h"
#include "support/MemorySecretStore.h"
#include "support/StoreFixture.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tirlo {

/// The names of all items in which the pollers look for keys.
inline const QStringList serviceKeys{
    u"vercel-token"_s,   u"stripe-api-key"_s, u"github-token"_s, u"resend-api-key"_s,
    u"notion-api-key"_s, u"calcom-api-key"_s, u"n8n-api-key"_s,
};

/// A body that a service may answer with; what can be told apart in it carries the number.
inline QByteArray goodBody(const QString &path, int number)
{
    static const std::pair<QLatin1String, QString> bodies[]{
        {"/v6/deployments"_L1,
         R"({"deployments": [{"uid": "%1", "name": "x", "state": "READY"}]})"},
        {"/v1/balance"_L1, R"({"available": [{"currency": "eur", "amount": %1}]})"},
        {"/v1/charges"_L1,
         R"({"data": [{"id": "%1", "amount": %1, "currency": "eur", "status": "ok"}]})"},
        {"/user/repos"_L1, R"([{"stargazers_count": %1}])"},
        {"/user"_L1, R"({"public_repos": %1})"},
        {"/emails"_L1, R"({"data": [{"id": "%1", "created_at": "2026-03-14T09:26:53Z"}]})"},
        {"/v1/search"_L1, R"({"results": [{"id": "%1"}]})"},
        {"/v2/bookings"_L1, R"({"data": [{"id": %1, "start": "2026-03-14T09:26:53Z"}]})"},
        {"/api/v1/executions"_L1, R"({"data": [{"id": %1, "status": "success"}]})"},
        {"/rest/executions"_L1, R"([{"id": %1, "status": "failed"}])"},
    };
    for (const auto &[start, body] : bodies) {
        if (path.startsWith(start))
            return body.arg(number).toUtf8();
    }
    return {};
}

/// The store and the services around the pollers, with every key.
struct PollerFixture : StoreFixture
{
    using Headers = QList<std::pair<QByteArray, QByteArray>>;

    PollerFixture()
    {
        keychain.load();
        for (const QString &item : serviceKeys)
            keychain.set(item, u"key"_s);
        keychain.set(u"n8n-url"_s, u"http://n8n.test"_s);
    }

    /// Makes the service's pill exist, as the user's choice in the settings does.
    void activate(const QString &id) { state.toggleIntegration(id); }

    /// Sends a cycle of the poller and answers its one request with status 200.
    void cycle(Poller &poller, const QByteArray &body)
    {
        cycle(poller, {.status = 200, .body = body});
    }
    void cycle(Poller &poller, const HttpReply &reply)
    {
        poller.poll();
        ASSERT_TRUE(http.answer(reply));
    }

    /// Checks what the oldest request asked for, and forgets it.
    void expectRequest(const QString &url, const Headers &headers, double timeout = 10)
    {
        ASSERT_FALSE(http.requests.empty());
        const HttpRequest request = http.requests.front();
        http.requests.erase(http.requests.begin());
        EXPECT_EQ(request.url.toString(), url);
        EXPECT_EQ(request.headers, headers);
        EXPECT_EQ(request.timeout, timeout);
    }

    /// The addresses asked for since the last call.
    QStringList takeAddresses()
    {
        QStringList addresses;
        for (const HttpRequest &request : std::exchange(http.requests, {}))
            addresses += request.url.toString();
        return addresses;
    }

    /// The lines that n8n's log has got since the last call.
    QStringList takeLogLines()
    {
        const QStringList lines = logLines(u"n8n.log"_s, 8).mid(m_takenLines);
        m_takenLines += lines.size();
        return lines;
    }

    ServiceData &services = state.services();
    FakeHttpClient http;
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    PollerContext context{state, notifications, sounds, queue, http, keychain, log};

private:
    qsizetype m_takenLines = 0;
};

} // namespace tirlo
