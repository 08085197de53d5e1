#pragma once

#include "platform/HttpClient.h"
#include "platform/MainQueue.h"

#include <QObject>
#include <QPointer>

class QNetworkAccessManager;
class QNetworkReply;

namespace tirlo {

class BackgroundWorker;
class DesktopProxy;

/// What a request goes through; all of it outlives the request.
struct HttpRoad
{
    QNetworkAccessManager &network;
    DesktopProxy &proxy;
    BackgroundWorker &unpacker;
    MainQueue &queue;
};

/// One request under way: gathers its answer and tells of it once, or of the reason for none.
///
/// It deletes itself after that. Deleted with the network before, it is silent.
class HttpExchange final : public QObject
{
public:
    HttpExchange(const HttpRoad &road, HttpRequest request,
                 std::function<void(const HttpReply &)> done);

    /// Sends the request; it fails when it has not ended after its time.
    void begin();
    /// Gives the request up in silence.
    void cancel();

private:
    void ask(const QUrl &url);
    void send(const QUrl &url);
    /// False when the request has failed with it.
    bool readMore();
    void finish();
    /// Ends with the body, unpacked.
    void unpack(int status);
    void follow(const QUrl &target);
    void fail(const QString &reason);
    void settle(const HttpReply &outcome);

    const HttpRoad m_road;
    const HttpRequest m_request;
    std::function<void(const HttpReply &)> m_done;
    WorkItem m_timeLimit;
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    int m_redirects = 0;
};

} // namespace tirlo
