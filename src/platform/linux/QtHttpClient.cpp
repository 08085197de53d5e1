#include "QtHttpClient.h"

#include "HttpExchange.h"
#include "platform/MainQueue.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QPointer>

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace tirlo {

namespace {

/// Tells the network what is known, so that it never waits for the desktop on the main thread.
class KnownProxy final : public QNetworkProxyFactory
{
public:
    explicit KnownProxy(const DesktopProxy &proxy)
        : m_proxy(proxy)
    {
    }

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return m_proxy.known(query);
    }

private:
    const DesktopProxy &m_proxy;
};

bool isHeaderName(const QByteArray &name)
{
    const auto isTokenCharacter = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_';
    };
    return !name.isEmpty() && std::ranges::all_of(name, isTokenCharacter);
}

bool isHeaderValue(const QByteArray &value)
{
    using namespace std::string_view_literals;
    return std::string_view(value.data(), value.size()).find_first_of("\r\n\0"sv)
        == std::string_view::npos;
}

/// Why the request can't be sent at all; empty if it can.
QString refusal(const HttpRequest &request)
{
    const QString scheme = request.url.scheme();
    const bool isWeb = scheme == QStringLiteral("https") || scheme == QStringLiteral("http");
    if (!request.url.isValid() || !isWeb || request.url.host().isEmpty())
        return QStringLiteral("The address is not a web address.");
    for (const auto &[name, value] : request.headers) {
        if (!isHeaderName(name) || !isHeaderValue(value))
            return QStringLiteral("The key contains characters that can't be sent.");
    }
    return {};
}

} // namespace

QtHttpClient::QtHttpClient(MainQueue &queue)
    : m_queue(queue)
    , m_proxy(queue)
{
}

QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::send(const HttpRequest &request, const QObject *owner,
                        std::function<void(const HttpReply &)> done)
{
    if (const QString reason = refusal(request); !reason.isEmpty()) {
        m_queue.post(
            [reason, done = std::move(done), hasOwner = owner != nullptr, guard = QPointer(owner)] {
                if (!hasOwner || guard)
                    done({.error = reason});
            });
        return;
    }

    auto *exchange
        = new HttpExchange({network(), m_proxy, m_unpacker, m_queue}, request, std::move(done));
    exchange->begin();
    if (owner)
        QObject::connect(owner, &QObject::destroyed, exchange, &HttpExchange::cancel);
}

QNetworkAccessManager &QtHttpClient::network()
{
    if (!m_network) {
        m_network = std::make_unique<QNetworkAccessManager>();
        m_network->setProxyFactory(new KnownProxy(m_proxy));
    }
    return *m_network;
}

} // namespace tirlo
