#include "TranscriptTail.h"

#include "FileDescriptor.h"
#include "core/Json.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace tirlo {

namespace {

constexpr off_t tailBytes = 64 * 1024;
/// How the text that stands in for the user's words begins; more may follow on what it broke off.
constexpr QLatin1String interruptMark("[Request interrupted by user");

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

/// Whether the line breaks a turn off after that time; none for what is no message of the session's
/// own.
std::optional<bool> interrupts(const QByteArray &line, const QDateTime &after)
{
    const auto entry = Json::parsedObject(line);
    if (!entry || entry->value(QLatin1String("isSidechain")).toBool())
        return std::nullopt;
    const QString type = entry->value(QLatin1String("type")).toString();
    if (type == QLatin1String("assistant"))
        return false;
    if (type != QLatin1String("user"))
        return std::nullopt;
    const QJsonObject message = entry->value(QLatin1String("message")).toObject();
    const auto written = QDateTime::fromString(entry->value(QLatin1String("timestamp")).toString(),
                                               Qt::ISODateWithMs);
    return firstTextOf(message.value(QLatin1String("content"))).startsWith(interruptMark)
        && (!written.isValid() || written >= after);
}

qint64 millisecondsOf(const timespec &time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

} // namespace

bool endsInInterrupt(const QString &transcript, const QDateTime &after)
{
    const FileDescriptor file(::open(QFile::encodeName(transcript).constData(),
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat facts = {};
    if (!file.isOpen() || fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)
        || facts.st_uid != getuid() || millisecondsOf(facts.st_mtim) < after.toMSecsSinceEpoch())
        return false;

    QByteArray tail(qsizetype(std::min(facts.st_size, tailBytes)), Qt::Uninitialized);
    const ssize_t length = pread(file.get(), tail.data(), std::size_t(tail.size()),
                                 facts.st_size - off_t(tail.size()));
    tail.truncate(std::max<qsizetype>(length, 0));

    QList<QByteArray> lines = tail.split('\n');
    std::ranges::reverse(lines);
    for (const QByteArray &line : std::as_const(lines)) {
        if (const auto isInterrupt = interrupts(line, after))
            return *isInterrupt;
    }
    return false;
}

} // namespace tirlo
