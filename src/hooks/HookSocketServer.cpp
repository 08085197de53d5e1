#include "HookSocketServer.h"

#include "core/Json.h"
#include "platform/LocalSocket.h"
#include "platform/MainQueue.h"
#include "platform/SocketLine.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>

#include <cerrno>
#include <utility>

namespace tirlo {

namespace {

const QByteArray okReply = QByteArrayLiteral(R"({"ok":true})");

QString troubleOf(int error)
{
    switch (error) {
    case 0:
        return {};
    case ENAMETOOLONG:
        return QStringLiteral("the path of the home folder is too long.");
    case EADDRINUSE:
        return QStringLiteral("another program has its socket.");
    case EISDIR:
        return QStringLiteral("a folder is in the place of its socket.");
    case EROFS:
    case EACCES:
    case ENOENT:
    case ENOTDIR:
        return QStringLiteral("its folder can't be made or written to.");
    case ENOSPC:
        return QStringLiteral("the disk is full.");
    default:
        return qt_error_string(error);
    }
}

void logTrouble(const QString &path, int error)
{
    const QByteArray name = QFile::encodeName(path);
    if (error == ENAMETOOLONG)
        qWarning("HookServer: socket path too long (%lld bytes, max %lld): %s",
                 qlonglong(name.size()), qlonglong(LocalSocket::longestPath), name.constData());
    else if (error != 0)
        qWarning("HookServer: can't listen at %s: %s", name.constData(),
                 qPrintable(troubleOf(error)));
    else
        qInfo("HookServer: listening again at %s", name.constData());
}

} // namespace

HookSocketServer::HookSocketServer(MainQueue &queue, QString path, Handlers handlers, uid_t owner)
    : m_queue(queue)
    , m_path(std::move(path))
    , m_handlers(std::make_shared<const Handlers>(std::move(handlers)))
    , m_server(m_path,
               {.line = [this](FileDescriptor connection,
                               const QByteArray &line) { handle(std::move(connection), line); },
                .listens = [this](int error) { tell(error); }},
               owner)
{
}

void HookSocketServer::start()
{
    m_server.start();
}

void HookSocketServer::tell(int error)
{
    logTrouble(m_path, error);
    const std::weak_ptr<const Handlers> handlers = m_handlers;
    m_queue.post([handlers, error] {
        const auto present = handlers.lock();
        if (present && present->trouble)
            present->trouble(troubleOf(error));
    });
}

void HookSocketServer::handle(FileDescriptor connection, const QByteArray &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        sendLine(connection.get(), okReply);
        return;
    }

    QJsonObject payload = document.object();
    const QString name = Json::text(payload, QLatin1String("hook_event_name")).value_or(QString());
    const std::weak_ptr<const Handlers> handlers = m_handlers;
    if (name == QLatin1String("PermissionRequest")) {
        const auto shared = std::make_shared<FileDescriptor>(std::move(connection));
        m_queue.post([handlers, shared, payload = std::move(payload)] {
            if (const auto present = handlers.lock())
                present->permissionRequest(std::move(*shared), payload);
        });
        return;
    }
    m_queue.post([handlers, name, payload = std::move(payload)] {
        if (const auto present = handlers.lock())
            present->event(name, payload);
    });
    sendLine(connection.get(), okReply);
}

} // namespace tirlo
