#include "FileBlock.h"

#include "platform/Utf8.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace tirlo {

namespace {

constexpr qint64 longestText = 200'000;
/// Bytes of the largest file that is held in memory, several times over while it is packed into a
/// message; no provider takes one nearly as large.
constexpr qint64 largestFile = 100LL * 1024 * 1024;

/// Bytes that are read before a stop is noticed.
constexpr qint64 pieceSize = 1024 * 1024;

struct Format
{
    QLatin1String extension;
    QLatin1String type;
    QLatin1String mediaType;
};

constexpr std::array formats{
    Format{QLatin1String("pdf"), QLatin1String("document"), QLatin1String("application/pdf")},
    Format{QLatin1String("jpg"), QLatin1String("image"), QLatin1String("image/jpeg")},
    Format{QLatin1String("jpeg"), QLatin1String("image"), QLatin1String("image/jpeg")},
    Format{QLatin1String("png"), QLatin1String("image"), QLatin1String("image/png")},
    Format{QLatin1String("gif"), QLatin1String("image"), QLatin1String("image/gif")},
    Format{QLatin1String("webp"), QLatin1String("image"), QLatin1String("image/webp")},
};

/// The form of a file that is not sent as text; null for any other.
const Format *formatOf(const QString &path)
{
    const auto format
        = std::ranges::find(formats, QFileInfo(path).suffix().toLower(), &Format::extension);
    return format == formats.end() ? nullptr : format;
}

/// The whole file; nothing when it can't be read or has more than `limit` bytes, or after a stop.
std::optional<QByteArray> contents(const QString &path, qint64 limit, const std::stop_token &stop)
{
    // Reading from a pipe or a device may never end.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > limit)
        return std::nullopt;
    QByteArray bytes;
    bytes.reserve(file.size());
    while (!stop.stop_requested() && bytes.size() <= limit) {
        const QByteArray piece = file.read(pieceSize);
        if (file.error() != QFileDevice::NoError)
            return std::nullopt;
        if (piece.isEmpty())
            return bytes;
        bytes += piece;
    }
    return std::nullopt;
}

std::optional<QJsonObject> binaryBlock(const QString &path, const Format &format,
                                       const std::stop_token &stop)
{
    const auto bytes = contents(path, largestFile, stop);
    if (!bytes)
        return std::nullopt;
    return QJsonObject{{QStringLiteral("type"), format.type},
                       {QStringLiteral("source"),
                        QJsonObject{{QStringLiteral("type"), QStringLiteral("base64")},
                                    {QStringLiteral("media_type"), format.mediaType},
                                    {QStringLiteral("data"), QLatin1String(bytes->toBase64())}}}};
}

std::optional<QJsonObject> contentsBlock(const QString &path, const std::stop_token &stop)
{
    const auto bytes = contents(path, longestText, stop);
    const auto text = bytes ? textFromUtf8(*bytes) : std::nullopt;
    if (!text)
        return std::nullopt;
    return textBlock(QStringLiteral("File contents:\n") + *text);
}

} // namespace

QJsonObject textBlock(const QString &text)
{
    return {{QStringLiteral("type"), QStringLiteral("text")}, {QStringLiteral("text"), text}};
}

std::optional<QJsonObject> readFileAsBlock(const QUrl &url, const std::stop_token &stop)
{
    const QString path = url.toLocalFile();
    const Format *format = formatOf(path);
    return format ? binaryBlock(path, *format, stop) : contentsBlock(path, stop);
}

AttachedFile::AttachedFile(QUrl url, std::stop_token stop)
    : m_url(std::move(url))
    , m_stop(std::move(stop))
{
}

bool AttachedFile::isText() const
{
    return !formatOf(m_url.toLocalFile());
}

const std::optional<QJsonObject> &AttachedFile::block()
{
    if (!std::exchange(m_isRead, true))
        m_block = readFileAsBlock(m_url, m_stop);
    return m_block;
}

} // namespace tirlo
