#include "HttpExchange.h"

#include "DesktopProxy.h"
#include "Gunzip.h"
#include "UploadOnce.h"
#include "platform/BackgroundWorker.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

#include <array>
#include <utility>

namespace tirlo {

namespace {

/// Bytes of the longest body that is taken, packed or not.
constexpr qsizetype bodyLimit = 32 * 1024 * 1024;
/// A packed body counts for so many times its bytes: what it holds is much longer.
constexpr qsizetype usualPacking = 32;
constexpr int mostRedirects = 8;

/// True if a redirect keeps the credentials with the server they were meant for.
bool mayFollow(const QUrl &from, const QUrl &to)
{
    if (from.host() != to.host())
        return false;
    constexpr int plain = 80;
    constexpr int encrypted = 443;
    const QString secure = QStringLiteral("https");
    if (from.scheme() == to.scheme()) {
        const int usual = from.scheme() == secure ? encrypted : plain;
        return from.port(usual) == to.port(usual);
    }
    // On any other port of the host there may be somebody else's server.
    return to.scheme() == secure && from.port(plain) == plain && to.port(encrypted) == encrypted;
}

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

/// True if the network's error only repeats a status of 400 or more, with the whole body at hand.
bool isAnswer(QNetworkReply::NetworkError error, int status)
{
    if (error == QNetworkReply::NoError)
        return status >= 200;
    if (status == 407)
        return error == QNetworkReply::ProxyAuthenticationRequiredError;
    return status >= 400 && error > QNetworkReply::UnknownProxyError
        && error != QNetworkReply::ContentReSendError && error != QNetworkReply::ProtocolFailure;
}

/// True if the body is shorter than was promised, which the network does not always notice.
bool breaksOff(const QNetworkReply &reply, int status, const QByteArray &body)
{
    constexpr int notModified = 304;
    return status != notModified && body.size() < reply.rawHeader("Content-Length").toLongLong();
}

QNetworkRequest networkRequest(const HttpRequest &request, const QUrl &url)
{
    QNetworkRequest result(url);
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, value);
    // Unpacked here: the network's own unpacking takes a body that breaks off for a whole one.
    result.setRawHeader("Accept-Encoding", "gzip");
    // Followed here: a redirect may only lead to the same server.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                        QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return result;
}

QNetworkReply *start(QNetworkAccessManager &network, const HttpRequest &request, const QUrl &url)
{
    if (request.method == "GET")
        return network.get(networkRequest(request, url));
    auto *body = new UploadOnce(request.body, &network);
    QNetworkReply *reply
        = network.sendCustomRequest(networkRequest(request, url), request.method, body);
    body->setParent(reply);
    return reply;
}

QString reasonFor(const QNetworkReply &reply)
{
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("The server could not be reached.");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("The server %1 could not be found.").arg(reply.url().host());
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("The secure connection to the server failed.");
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return reply.errorString();
    default:
        return QStringLiteral("The connection to the server was lost.");
    }
}

} // namespace

HttpExchange::HttpExchange(const HttpRoad &road, HttpRequest request,
                           std::function<void(const HttpReply &)> done)
    : QObject(&road.network)
    , m_road(road)
    , m_request(std::move(request))
    , m_done(std::move(done))
{
}

void HttpExchange::begin()
{
    m_timeLimit = m_road.queue.after(m_request.timeout, this,
                                     [this] { fail(QStringLiteral("The request timed out.")); });
    ask(m_request.url);
}

void HttpExchange::cancel()
{
    m_done = nullptr;
    settle({});
}

void HttpExchange::ask(const QUrl &url)
{
    m_road.proxy.find(url, this, [this, url] {
        // One that has failed in the meantime is only left to be deleted.
        if (m_done)
            send(url);
    });
}

void HttpExchange::send(const QUrl &url)
{
    m_body.clear();
    m_reply = start(m_road.network, m_request, url);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readMore);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::finish);
}

bool HttpExchange::readMore()
{
    std::array<char, 64 * 1024> piece;
    for (;;) {
        const qint64 count = m_reply->read(piece.data(), piece.size());
        if (count <= 0)
            return true;
        if (m_body.size() + count > bodyLimit) {
            fail(QStringLiteral("The server's answer is too long."));
            return false;
        }
        m_body.append(piece.data(), count);
    }
}

void HttpExchange::finish()
{
    if (!readMore())
        return;
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (!isAnswer(m_reply->error(), status) || breaksOff(*m_reply, status, m_body)) {
        fail(reasonFor(*m_reply));
        return;
    }
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (m_request.method == "GET" && isRedirect(status) && !target.isEmpty()) {
        follow(m_reply->url().resolved(target));
        return;
    }
    if (m_reply->rawHeader("Content-Encoding").contains("gzip") && !m_body.isEmpty())
        unpack(status);
    else
        settle({.status = status, .body = std::move(m_body)});
}

void HttpExchange::unpack(int status)
{
    const auto take = [this, status](const std::optional<QByteArray> &body) {
        if (body)
            settle({.status = status, .body = *body});
        else
            fail(QStringLiteral("The server's answer is damaged or too long."));
    };
    m_road.unpacker.postIfLong(
        m_road.queue, this, m_body.size() * usualPacking,
        [body = m_body] { return gunzip(body, bodyLimit); }, take);
}

void HttpExchange::follow(const QUrl &target)
{
    if (!mayFollow(m_reply->url(), target)) {
        fail(QStringLiteral("The server sent the request on to another address."));
        return;
    }
    if (++m_redirects > mostRedirects) {
        fail(QStringLiteral("The server sends the request in circles."));
        return;
    }
    m_reply->deleteLater();
    ask(target);
}

void HttpExchange::fail(const QString &reason)
{
    settle({.error = reason});
}

void HttpExchange::settle(const HttpReply &outcome)
{
    m_timeLimit.cancel();
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
    deleteLater();
    // Last, since it may end the whole program.
    if (const auto done = std::exchange(m_done, nullptr))
        done(outcome);
}

} // namespace tirlo
