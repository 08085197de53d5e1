#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <utility>

class QObject;

namespace tirlo {

/// One request to a web service.
struct HttpRequest
{
    QByteArray method = "GET";
    QUrl url = {};
    /// Name and value; a value with a line break in it fails the request before it is sent.
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    QByteArray body = {};
    /// Seconds for the whole of it, from the call to the last byte of the answer.
    double timeout = 10;
};

/// What came of a request.
struct HttpReply
{
    /// The answer's status, also when it tells of an error; 0 when there was no answer.
    int status = 0;
    /// The answer's body, decoded; empty when there was no answer.
    QByteArray body = {};
    /// Why there was no whole answer, in words for the user; empty when there was one.
    QString error = {};

    bool operator==(const HttpReply &) const = default;
};

/// Talks to web services, encrypted where the address says so and then always verified.
///
/// A redirect to another host is not followed. A body beyond 32 MB fails the request, and so does
/// one that breaks off; yet one in chunks and not packed, which names no length, may look whole.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// Sends the request and hands over what came of it: once, on the main thread, later.
    ///
    /// When `owner` has gone by then the request is given up in silence; a null owner lives for
    /// ever.
    virtual void send(const HttpRequest &request, const QObject *owner,
                      std::function<void(const HttpReply &)> done)
        = 0;
};

} // namespace tirlo
