#include "LoopbackServer.h"

#include "LoopbackCertificate.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>

#include <sys/socket.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace tirlo {

namespace {

constexpr qint64 endlessSize = 1024LL * 1024 * 1024;
constexpr qint64 sendBufferSize = 4 * 1024 * 1024;

/// Takes connections, encrypted ones where it has a configuration.
class Listener final : public QTcpServer
{
public:
    using QTcpServer::QTcpServer;

    std::optional<QSslConfiguration> encryption;

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        if (encryption) {
            socket->setSslConfiguration(*encryption);
            socket->startServerEncryption();
        }
        addPendingConnection(socket);
    }
};

QByteArray gzip(const QByteArray &bytes)
{
    constexpr int largestWindow = 15;
    constexpr int inGzip = 16;
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, largestWindow + inGzip, 8,
                 Z_DEFAULT_STRATEGY);
    QByteArray packed(qsizetype(deflateBound(&stream, uLong(bytes.size()))), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = uInt(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

QByteArray chunk(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

QByteArray head(const LoopbackAnswer &answer, const QByteArray &framing)
{
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(answer.status) + " Scripted\r\n" + framing;
    for (const auto &[name, value] : answer.headers)
        bytes += name + ": " + value + "\r\n";
    return bytes + "\r\n";
}

QByteArray lengthLine(qsizetype length)
{
    return "Content-Length: " + QByteArray::number(length) + "\r\n";
}

void resetConnection(QTcpSocket &socket)
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

/// Cuts one whole request off the front of the bytes; nothing while it is not complete.
std::optional<LoopbackRequest> takeRequest(QByteArray &bytes)
{
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;

    LoopbackRequest request;
    request.headerLines = bytes.first(headEnd).replace("\r\n", "\n").split('\n');
    const QList<QByteArray> line = request.headerLines.takeFirst().split(' ');
    request.method = line.value(0);
    request.target = line.value(1);

    const qsizetype length = request.header("content-length").toLongLong();
    if (bytes.size() < headEnd + 4 + length)
        return std::nullopt;
    request.body = bytes.mid(headEnd + 4, length);
    bytes.remove(0, headEnd + 4 + length);
    return request;
}

} // namespace

QByteArray LoopbackRequest::header(const QByteArray &name) const
{
    for (const QByteArray &line : headerLines) {
        const qsizetype colon = line.indexOf(':');
        if (line.first(std::max<qsizetype>(colon, 0)).toLower() == name.toLower())
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

LoopbackServer::LoopbackServer()
    : m_server(new Listener(this))
{
    connect(m_server, &QTcpServer::newConnection, this, &LoopbackServer::accept);
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("The loopback server found no port.");
}

void LoopbackServer::useUntrustedCertificate()
{
    QSslConfiguration encryption = QSslConfiguration::defaultConfiguration();
    encryption.setLocalCertificate(QSslCertificate(loopbackCertificate.toByteArray()));
    encryption.setPrivateKey(QSslKey(loopbackKey.toByteArray(), QSsl::Ec));
    static_cast<Listener *>(m_server)->encryption = encryption;
    m_encrypts = true;
}

QUrl LoopbackServer::url(const QString &path) const
{
    const QString scheme = m_encrypts ? QStringLiteral("https") : QStringLiteral("http");
    return QUrl(
        QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(m_server->serverPort()).arg(path));
}

void LoopbackServer::accept()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        ++connections;
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket, bytes = std::make_shared<QByteArray>()] {
                    *bytes += socket->readAll();
                    while (auto request = takeRequest(*bytes)) {
                        requests.push_back(*request);
                        answer(socket, *request);
                    }
                });
    }
}

void LoopbackServer::answer(QTcpSocket *socket, const LoopbackRequest &request)
{
    LoopbackAnswer answer{.status = 404};
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    } else if (respond) {
        answer = respond(request);
    }

    const QByteArray &body = answer.body;
    const QByteArray half = body.first(body.size() / 2);
    const QByteArray inChunks = "Transfer-Encoding: chunked\r\n";
    const QByteArray isGzip = "Content-Encoding: gzip\r\n";
    bodyBytes += body.size();
    switch (answer.manner) {
    case LoopbackManner::whole:
        socket->write(head(answer, lengthLine(body.size())) + body);
        return;
    case LoopbackManner::chunked:
        socket->write(head(answer, inChunks) + chunk(half) + chunk(body.mid(half.size()))
                      + chunk({}));
        return;
    case LoopbackManner::gzip: {
        const QByteArray packed = gzip(body);
        socket->write(head(answer, isGzip + lengthLine(packed.size())) + packed);
        return;
    }
    case LoopbackManner::stopsHalfway:
        socket->write(head(answer, lengthLine(body.size())) + half);
        socket->disconnectFromHost();
        return;
    case LoopbackManner::stopsBetweenChunks:
        socket->write(head(answer, inChunks) + chunk(half));
        socket->disconnectFromHost();
        return;
    case LoopbackManner::stopsHalfwayInGzip: {
        const QByteArray packed = gzip(body);
        socket->write(head(answer, isGzip + lengthLine(packed.size()))
                      + packed.first(packed.size() / 2));
        socket->disconnectFromHost();
        return;
    }
    case LoopbackManner::hangsHalfway:
        socket->write(head(answer, lengthLine(body.size())) + half);
        return;
    case LoopbackManner::hangs:
        return;
    case LoopbackManner::resets:
        resetConnection(*socket);
        return;
    case LoopbackManner::endless:
        socket->write(head(answer, {}));
        bodyBytes = 0;
        keepSending(socket, body);
        connect(socket, &QTcpSocket::bytesWritten, this,
                [this, socket, body] { keepSending(socket, body); });
        return;
    }
}

void LoopbackServer::keepSending(QTcpSocket *socket, const QByteArray &piece)
{
    while (bodyBytes < endlessSize && socket->bytesToWrite() < sendBufferSize) {
        socket->write(piece);
        bodyBytes += piece.size();
    }
    if (bodyBytes >= endlessSize && socket->bytesToWrite() == 0)
        socket->disconnectFromHost();
}

} // namespace tirlo
