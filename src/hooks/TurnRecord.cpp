#include "TurnRecord.h"

#include "core/Json.h"
#include "platform/FileDescriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace tirlo {

namespace {

using Kind = SilentEnd::Kind;

constexpr off_t tailBytes = 256 * 1024;
/// How the text that stands in for the user's words begins; more may follow on what it broke off.
constexpr QLatin1String interruptMark("[Request interrupted by user");
constexpr QLatin1String cancelMark("Request cancelled.");
/// Around the words of a service that refused.
constexpr QLatin1String errorHead("[API Error: ");

qint64 millisecondsOf(const timespec &time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

/// The end of the file, if it was written after that time.
QByteArray tailOf(const QString &path, const QDateTime &after)
{
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat facts = {};
    if (!file.isOpen() || fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)
        || facts.st_uid != getuid() || millisecondsOf(facts.st_mtim) < after.toMSecsSinceEpoch())
        return {};

    QByteArray tail(qsizetype(std::min(facts.st_size, tailBytes)), Qt::Uninitialized);
    const ssize_t length = pread(file.get(), tail.data(), std::size_t(tail.size()),
                                 facts.st_size - off_t(tail.size()));
    tail.truncate(std::max<qsizetype>(length, 0));
    return tail;
}

QString textOf(const QJsonObject &object, const char *key)
{
    return Json::text(object, QLatin1String(key)).value_or(QString());
}

/// The first text of a message, whose content is one or a list of parts.
QString firstTextOf(const QJsonValue &content)
{
    if (content.isString())
        return content.toString();
    for (const QJsonValue part : content.toArray()) {
        if (const auto text = Json::text(part.toObject(), QLatin1String("text")))
            return *text;
    }
    return {};
}

/// A failure, of whose words those alone remain that are meant for people.
SilentEnd failure(QString words)
{
    if (words.startsWith(errorHead) && words.endsWith(u']'))
        words = words.sliced(errorHead.size()).chopped(1);
    const bool isRateLimit = words.contains(QLatin1String("429"))
        || words.contains(QLatin1String("rate limit"), Qt::CaseInsensitive);
    if (const auto object = Json::parsedObject(words.toUtf8())) {
        const QJsonObject error = Json::object(*object, QLatin1String("error")).value_or(*object);
        if (const QString message = textOf(error, "message"); !message.isEmpty())
            words = message;
    }
    return {Kind::failed, words, isRateLimit};
}

/// What one line says; none for what is no word on the session's turn.
std::optional<SilentEnd> wordOf(const QJsonObject &entry)
{
    const QString type = textOf(entry, "type");
    if (entry.value(QLatin1String("isSidechain")).toBool())
        return std::nullopt;
    if (type == QLatin1String("info") || type == QLatin1String("error")) {
        const QString words = textOf(entry, "content");
        if (type == QLatin1String("error"))
            return failure(words);
        return words == cancelMark ? std::optional(SilentEnd{Kind::brokenOff, {}, false})
                                   : std::nullopt;
    }
    if (type == QLatin1String("event_msg")) {
        const QJsonObject event = entry.value(QLatin1String("payload")).toObject();
        const QString what = textOf(event, "type");
        if (what == QLatin1String("turn_aborted"))
            return SilentEnd{Kind::brokenOff, {}, false};
        const QJsonValue error = event.value(QLatin1String("error"));
        if (what == QLatin1String("task_complete") && error.isObject())
            return failure(textOf(error.toObject(), "message"));
        return std::nullopt;
    }
    if (type == QLatin1String("assistant"))
        return SilentEnd{};
    if (type != QLatin1String("user") || !entry.contains(QLatin1String("message")))
        return std::nullopt;
    const QJsonObject message = entry.value(QLatin1String("message")).toObject();
    const bool isBroken
        = firstTextOf(message.value(QLatin1String("content"))).startsWith(interruptMark);
    return isBroken ? SilentEnd{Kind::brokenOff, {}, false} : SilentEnd{};
}

/// The last word on the turn; what was written before the time counts for nothing.
SilentEnd endIn(const QByteArray &tail, const QDateTime &after)
{
    QList<QByteArray> lines = tail.split('\n');
    std::ranges::reverse(lines);
    for (const QByteArray &line : std::as_const(lines)) {
        const auto entry = Json::parsedObject(line);
        if (!entry)
            continue;
        const std::optional<SilentEnd> word = wordOf(*entry);
        if (!word)
            continue;
        const auto written = QDateTime::fromString(textOf(*entry, "timestamp"), Qt::ISODateWithMs);
        return written.isValid() && written < after ? SilentEnd() : *word;
    }
    return {};
}

/// An agent of one kind says of each of its processes whether it is busy. A turn that is broken off
/// before its first word has no other trace.
bool saysIdle(const TurnRecord &record)
{
    constexpr QLatin1String folder("/projects/");
    const qsizetype home = record.transcript.lastIndexOf(folder);
    if (record.pid <= 0 || home < 0)
        return false;
    const QString path
        = QStringLiteral("%1/sessions/%2.json").arg(record.transcript.first(home)).arg(record.pid);
    const auto status = Json::parsedObject(tailOf(path, record.heard));
    return status && textOf(*status, "sessionId") == record.sessionId
        && textOf(*status, "status") == QLatin1String("idle")
        && status->value(QLatin1String("statusUpdatedAt")).toDouble()
        > double(record.heard.toMSecsSinceEpoch());
}

} // namespace

SilentEnd silentEnd(const TurnRecord &record)
{
    const SilentEnd end = endIn(tailOf(record.transcript, record.heard), record.heard);
    if (end.kind == Kind::none && saysIdle(record))
        return {Kind::brokenOff, {}, false};
    return end;
}

} // namespace tirlo
