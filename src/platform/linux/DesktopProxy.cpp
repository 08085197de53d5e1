#include "DesktopProxy.h"

#include "platform/MainQueue.h"

#include <QHostAddress>

#include <utility>

namespace tirlo {

namespace {

/// Seconds for which an answer of the desktop holds.
constexpr double answerLife = 300;

bool isThisMachine(const QString &host)
{
    return host == QStringLiteral("localhost") || QHostAddress(host).isLoopback();
}

QString serverOf(const QUrl &url)
{
    return QStringLiteral("%1://%2:%3").arg(url.scheme(), url.host()).arg(url.port());
}

} // namespace

DesktopProxy::DesktopProxy(MainQueue &queue)
    : m_queue(queue)
{
}

void DesktopProxy::find(const QUrl &url, const QObject *owner, std::function<void()> then)
{
    const QString server = serverOf(url);
    const auto isKnown = [this, server] {
        const auto answer = m_answers.constFind(server);
        return answer != m_answers.cend() && m_queue.mediaTime() - answer->time < answerLife;
    };
    if (isThisMachine(url.host()) || isKnown()) {
        then();
        return;
    }
    const auto take = [this, server, owner = QPointer(owner),
                       then = std::move(then)](const QList<QNetworkProxy> &proxies) {
        m_answers.insert(server, {proxies, m_queue.mediaTime()});
        if (owner)
            then();
    };
    m_worker.post(
        m_queue, &m_life,
        [url] { return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url)); }, take);
}

QList<QNetworkProxy> DesktopProxy::known(const QNetworkProxyQuery &query) const
{
    const auto answer = m_answers.constFind(serverOf(query.url()));
    if (answer == m_answers.cend() || isThisMachine(query.peerHostName()))
        return {QNetworkProxy::NoProxy};
    return answer->proxies;
}

} // namespace tirlo
