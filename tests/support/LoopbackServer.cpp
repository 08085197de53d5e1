#include "LoopbackServer.h"

#include <QFile>
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

QByteArray packed(const QByteArray &bytes)
{
    constexpr int gzipWindow = 15 + 16;
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY);
    QByteArray result(qsizetype(deflateBound(&stream, uLong(bytes.size()))), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = uInt(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(result.data());
    stream.avail_out = uInt(result.size());
    deflate(&stream, Z_FINISH);
    result.truncate(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return result;
}

QByteArray chunk(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

/// Cuts one whole request off the front of the bytes; nothing while it is not complete.
std::optional<LoopbackRequest> takeRequest(QByteArray &bytes)
{
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;

    LoopbackRequest request;
    QList<QByteArray> lines = bytes.first(headEnd).replace("\r\n", "\n").split('\n');
    const QList<QByteArray> first = lines.takeFirst().split(' ');
    request.method = first.value(0);
    request.target = first.value(1);
    for (const QByteArray &line : lines) {
        const qsizetype colon = std::max<qsizetype>(line.indexOf(':'), 0);
        request.headers.insert(line.first(colon).toLower(), line.mid(colon + 1).trimmed());
    }

    const qsizetype length = request.header("content-length").toLongLong();
    if (bytes.size() < headEnd + 4 + length)
        return std::nullopt;
    request.body = bytes.mid(headEnd + 4, length);
    bytes.remove(0, headEnd + 4 + length);
    return request;
}

} // namespace

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
    // For 127.0.0.1, signed by itself, made for the tests and of no worth anywhere else.
    QFile file(QStringLiteral(TIRLO_LOOPBACK_CERTIFICATE));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The loopback server's certificate is not there.");
    const QByteArray pem = file.readAll();
    encryption.setLocalCertificate(QSslCertificate(pem));
    encryption.setPrivateKey(QSslKey(pem, QSsl::Ec));
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

    using enum LoopbackManner;
    const LoopbackManner manner = answer.manner;
    const bool isPacked = manner == gzip || manner == stopsHalfwayInGzip;
    const bool isChunked = manner == chunked || manner == stopsBetweenChunks;
    const QByteArray body = isPacked ? packed(answer.body) : answer.body;
    bodyBytes += answer.body.size();

    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Scripted\r\n";
    if (isPacked)
        head += "Content-Encoding: gzip\r\n";
    if (isChunked)
        head += "Transfer-Encoding: chunked\r\n";
    else if (manner != endless)
        head += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    for (const auto &[name, value] : answer.headers)
        head += name + ": " + value + "\r\n";
    head += "\r\n";
    QByteArray half = body.first(body.size() / 2);
    QByteArray rest = body.mid(half.size());
    if (isChunked) {
        half = chunk(half);
        rest = chunk(rest) + chunk({});
    }

    switch (manner) {
    case whole:
    case chunked:
    case gzip:
        socket->write(head + half + rest);
        return;
    case stopsHalfway:
    case stopsBetweenChunks:
    case stopsHalfwayInGzip:
        socket->write(head + half);
        socket->disconnectFromHost();
        return;
    case hangsHalfway:
        socket->write(head + half);
        return;
    case hangs:
        return;
    case resets: {
        const linger atOnce{.l_onoff = 1, .l_linger = 0};
        setsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        socket->abort();
        return;
    }
    case endless:
        socket->write(head);
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
