#pragma once

#include "platform/HttpClient.h"
#include "platform/MainQueue.h"

#include <QObject>
#include <QPointer>

class QNetworkAccessManager;
class QNetworkReply;

namespace tirlo {

/// One request under way: gathers its answer and tells of it once, or of the reason for none.
///
/// It deletes itself after that. Deleted with the network before, it is silent.
class HttpExchange final : public QObject
{
public:
    HttpExchange(QNetworkAccessManager &network, HttpRequest request,
                 std::function<void(const HttpReply &)> done);

    /// Sends the request; it fails when it has not ended after its time.
    void begin(MainQueue &queue);
    /// Gives the request up in silence.
    void cancel();

private:
    void ask(const QUrl &url);
    /// False when the request has failed with it.
    bool readMore();
    void finish();
    void follow(const QUrl &target);
    void fail(const QString &reason);
    void settle(const HttpReply &outcome);

    QNetworkAccessManager &m_network;
    const HttpRequest m_request;
    std::function<void(const HttpReply &)> m_done;
    WorkItem m_timeLimit;
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    int m_redirects = 0;
};

} // namespace tirlo
