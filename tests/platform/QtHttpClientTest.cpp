#include "platform/linux/QtHttpClient.h"

#include "support/LoopbackServer.h"
#include "support/ManualQueue.h"
#include "support/SpinUntil.h"

#include <gtest/gtest.h>

#include <optional>

using namespace tirlo;

namespace {

class QtHttpClientTest : public testing::Test
{
protected:
    /// Sends the request and waits for what comes of it.
    HttpReply outcomeOf(const HttpRequest &request)
    {
        std::optional<HttpReply> outcome;
        client->send(request, nullptr, [&](const HttpReply &reply) { outcome = reply; });
        EXPECT_FALSE(outcome) << "told before send() returned";
        EXPECT_TRUE(spinUntil([&] {
            queue.drain();
            return outcome.has_value();
        }));
        return outcome.value_or(HttpReply{});
    }

    HttpReply outcomeOf(const LoopbackAnswer &answer)
    {
        server.answers = {answer};
        return outcomeOf({.url = server.url()});
    }

    /// What a server does that answers every request like this.
    static auto always(const LoopbackAnswer &answer)
    {
        return [answer](const LoopbackRequest &) { return answer; };
    }

    ManualQueue queue;
    LoopbackServer server;
    std::optional<QtHttpClient> client{std::in_place, queue};
};

TEST_F(QtHttpClientTest, TakesEveryStatusAndFramingAsAnAnswer)
{
    const QByteArray body = QByteArray("A body of some length. ").repeated(200'000);
    for (const auto manner : {LoopbackManner::whole, LoopbackManner::chunked, LoopbackManner::gzip})
        EXPECT_EQ(outcomeOf(LoopbackAnswer{.body = body, .manner = manner}).body, body);

    for (const int status : {200, 204, 304, 400, 401, 403, 404, 407, 409, 418, 429, 500, 529}) {
        const QByteArray words = status == 204 || status == 304 ? "" : "words";
        EXPECT_EQ(outcomeOf(LoopbackAnswer{.status = status, .body = words}),
                  (HttpReply{.status = status, .body = words}));
    }
    EXPECT_EQ(outcomeOf(LoopbackAnswer{.headers = {{"Content-Encoding", "gzip"}}}),
              (HttpReply{.status = 200}));
}

TEST_F(QtHttpClientTest, AnAnswerThatBreaksOffIsNoAnswer)
{
    const QByteArray body = QByteArray("0123456789").repeated(1000);
    for (const auto manner : {LoopbackManner::stopsHalfway, LoopbackManner::stopsHalfwayInGzip,
                              LoopbackManner::resets}) {
        for (const int status : {200, 500}) {
            server.respond = always({.status = status, .body = body, .manner = manner});
            const HttpReply reply = outcomeOf({.url = server.url()});
            EXPECT_EQ(reply, (HttpReply{.error = reply.error})) << int(manner);
            EXPECT_FALSE(reply.error.isEmpty() || reply.error.contains("127.0.0.1")) << int(manner);
        }
    }
    server.respond = always({.body = body, .manner = LoopbackManner::stopsBetweenChunks});
    EXPECT_NE(outcomeOf({.url = server.url()}).error, "");
    server.requests.clear();
    EXPECT_NE(outcomeOf({.method = "POST", .url = server.url(), .body = "mail"}).error, "");
    EXPECT_EQ(server.requests.size(), 1u) << "what changes something is not sent again";
}

TEST_F(QtHttpClientTest, AHangingServerIsGivenUpAfterTheTimeForTheWholeRequest)
{
    for (const auto manner : {LoopbackManner::hangs, LoopbackManner::hangsHalfway}) {
        server.answers = {{.body = "half of this", .manner = manner}};
        server.requests.clear();
        std::optional<HttpReply> outcome;
        client->send({.url = server.url(), .timeout = 45}, nullptr,
                     [&](const HttpReply &reply) { outcome = reply; });
        ASSERT_TRUE(spinUntil([&] { return server.requests.size() == 1; }));
        queue.advance(44.9);
        EXPECT_FALSE(outcome);
        queue.advance(0.2);
        EXPECT_EQ(outcome, (HttpReply{.error = "The request timed out."}));
    }
}

TEST_F(QtHttpClientTest, AnEndlessBodyIsCutOff)
{
    const HttpReply reply = outcomeOf(
        LoopbackAnswer{.body = QByteArray(1 << 20, 'x'), .manner = LoopbackManner::endless});
    EXPECT_EQ(reply.error, "The server's answer is too long.");
    EXPECT_LT(server.bodyBytes, 64 << 20);

    const HttpReply bomb = outcomeOf(
        LoopbackAnswer{.body = QByteArray(40 << 20, 'x'), .manner = LoopbackManner::gzip});
    EXPECT_EQ(bomb.error, "The server's answer is damaged or too long.");
}

TEST_F(QtHttpClientTest, CredentialsAreNotCarriedToAnotherServer)
{
    LoopbackServer other;
    const auto redirect = [&](const QByteArray &to) {
        server.requests.clear();
        server.answers = {{.status = 302, .headers = {{"Location", to}}}, {.body = "here"}};
        return outcomeOf({.url = server.url("/old"), .headers = {{"Authorization", "Bearer x"}}});
    };
    EXPECT_EQ(redirect("/new").body, "here");
    EXPECT_EQ(server.requests.at(1).target, "/new");

    QUrl encrypted = other.url();
    encrypted.setScheme("https");
    for (const QByteArray &to :
         {other.url().toEncoded(), encrypted.toEncoded(), QByteArray("https://127.0.0.1/"),
          QByteArray("http://localhost/"), QByteArray("file:///etc/hostname")}) {
        EXPECT_EQ(redirect(to),
                  (HttpReply{.error = "The server sent the request on to another address."}))
            << to.constData();
    }
    EXPECT_EQ(other.connections, 0);

    server.answers.clear();
    server.respond = always({.status = 301, .headers = {{"Location", "/again"}}});
    EXPECT_NE(outcomeOf({.url = server.url()}).error, "") << "a circle";
}

TEST_F(QtHttpClientTest, WhatCannotBeSentIsRefusedBeforeItIsSent)
{
    const QUrl url = server.url();
    for (const HttpRequest &request : {
             HttpRequest{.url = url, .headers = {{"x-api-key", "secret\r\nHost: evil"}}},
             HttpRequest{.url = url, .headers = {{"x-api-key", "secret\n"}}},
             HttpRequest{.url = url, .headers = {{"x-api-key", QByteArray("secret\0", 7)}}},
             HttpRequest{.url = url, .headers = {{"x-api\r\nkey", "secret"}}},
             HttpRequest{.url = QUrl("file:///etc/hostname")},
             HttpRequest{.url = QUrl("//somewhere")},
             HttpRequest{.url = QUrl()},
         }) {
        const QString error = outcomeOf(request).error;
        EXPECT_FALSE(error.isEmpty() || error.contains("secret")) << error.toStdString();
    }
    EXPECT_EQ(server.connections, 0);
}

TEST_F(QtHttpClientTest, ACertificateThatNobodyTrustsGetsNoRequest)
{
    server.useUntrustedCertificate();
    server.respond = always({.body = "secret"});
    EXPECT_EQ(outcomeOf({.url = server.url()}),
              (HttpReply{.error = "The secure connection to the server failed."}));
    EXPECT_EQ(server.connections, 1);
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(QtHttpClientTest, UsesTheDesktopsProxyForOtherMachines)
{
    LoopbackServer proxy;
    LoopbackServer laterProxy;
    const HttpRequest request{.url = QUrl("http://nowhere.invalid/path")};
    proxy.respond = always({.body = "by proxy"});
    laterProxy.respond = always({.body = "later"});
    qputenv("http_proxy", proxy.url().toEncoded());
    server.answers = {{.body = "directly"}};
    EXPECT_EQ(outcomeOf(request).body, "by proxy");
    EXPECT_EQ(proxy.requests.at(0).target, "http://nowhere.invalid/path");
    EXPECT_EQ(outcomeOf({.url = server.url()}).body, "directly");

    qputenv("http_proxy", laterProxy.url().toEncoded());
    EXPECT_EQ(outcomeOf(request).body, "by proxy") << "the desktop is not asked each time";
    queue.advance(600);
    EXPECT_EQ(outcomeOf(request).body, "later");
    qunsetenv("http_proxy");
}

TEST_F(QtHttpClientTest, RequestsEndWithTheirOwnerAndWithTheClientInSilence)
{
    server.respond = always({.manner = LoopbackManner::hangs});
    int told = 0;
    const auto count = [&](const HttpReply &) { ++told; };
    auto owner = std::make_unique<QObject>();
    client->send({.url = server.url(), .timeout = 10}, owner.get(), count);
    client->send({.url = QUrl()}, owner.get(), count);
    client->send({.url = server.url(), .timeout = 10}, nullptr, count);
    ASSERT_TRUE(spinUntil([&] { return server.requests.size() == 2; }));
    owner.reset();
    client.reset();
    queue.advance(20);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0);
}

} // namespace
