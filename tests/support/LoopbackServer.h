#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QObject>
#include <QUrl>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

class QTcpServer;
class QTcpSocket;

namespace tirlo {

/// A request as the server saw it.
struct LoopbackRequest
{
    QByteArray method;
    /// Path and query, as sent.
    QByteArray target;
    /// By their names in lower case.
    QMap<QByteArray, QByteArray> headers;
    QByteArray body;

    /// The header's value, its name in any case; a null array without it.
    [[nodiscard]] QByteArray header(const QByteArray &name) const
    {
        return headers.value(name.toLower());
    }
};

/// What a server does after the head of its answer, or instead of it.
enum class LoopbackManner {
    /// Sends the body: with its length, in chunks without, or compressed.
    whole,
    chunked,
    gzip,
    /// Promises the whole of such a body and closes the connection in the middle.
    stopsHalfway,
    stopsBetweenChunks,
    stopsHalfwayInGzip,
    /// Sends the head and half of the body and then nothing.
    hangsHalfway,
    /// Never answers.
    hangs,
    /// Resets the connection without an answer.
    resets,
    /// Sends the body again and again, up to 1 GB in all.
    endless,
};

/// An answer to one request.
struct LoopbackAnswer
{
    int status = 200;
    QByteArray body = {};
    LoopbackManner manner = LoopbackManner::whole;
    QList<std::pair<QByteArray, QByteArray>> headers = {};
};

/// A web server on 127.0.0.1 that records what it is asked and answers as it is told.
///
/// It runs on the thread that made it, so its event loop has to run.
class LoopbackServer final : public QObject
{
public:
    LoopbackServer();

    /// Encrypts its connections with a certificate that nobody trusts; call it first.
    void useUntrustedCertificate();

    /// The server's address with the path, which starts with a slash.
    [[nodiscard]] QUrl url(const QString &path = QStringLiteral("/")) const;

    /// Answers the next requests, in order, before `respond` is asked.
    std::deque<LoopbackAnswer> answers;
    /// Answers what `answers` does not; without it such requests get a 404.
    std::function<LoopbackAnswer(const LoopbackRequest &)> respond;

    /// Every request so far.
    std::vector<LoopbackRequest> requests;
    /// Connections so far, also those that brought no request.
    int connections = 0;
    /// Bytes of bodies sent so far.
    qint64 bodyBytes = 0;

private:
    void accept();
    void answer(QTcpSocket *socket, const LoopbackRequest &request);
    void keepSending(QTcpSocket *socket, const QByteArray &piece);

    QTcpServer *m_server;
    bool m_encrypts = false;
};

} // namespace tirlo
