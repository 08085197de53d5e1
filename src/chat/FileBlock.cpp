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
/// Bytes of the largest file that is held in memory; no provider takes one nearly as large.
constexpr qint64 largestFile = 512LL * 1024 * 1024;

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

/// The whole file; nothing when it can't be read or has more than `limit` bytes.
std::optional<QByteArray> contents(const QString &path, qint64 limit)
{
    // Reading from a pipe or a device may never end.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > limit)
        return std::nullopt;
    const QByteArray bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > limit)
        return std::nullopt;
    return bytes;
}

std::optional<QJsonObject> binaryBlock(const QString &path, const Format &format)
{
    const auto bytes = contents(path, largestFile);
    if (!bytes)
        return std::nullopt;
    return QJsonObject{
        {QStringLiteral("type"), format.type},
        {QStringLiteral("source"),
         QJsonObject{{QStringLiteral("type"), QStringLiteral("base64")},
                     {QStringLiteral("media_type"), format.mediaType},
                     {QStringLiteral("data"), QString::fromLatin1(bytes->toBase64())}}}};
}

std::optional<QJsonObject> textBlock(const QString &path)
{
    const auto bytes = contents(path, longestText);
    const auto text = bytes ? textFromUtf8(*bytes) : std::nullopt;
    if (!text)
        return std::nullopt;
    return QJsonObject{{QStringLiteral("type"), QStringLiteral("text")},
                       {QStringLiteral("text"), QStringLiteral("File contents:\n") + *text}};
}

} // namespace

std::optional<QJsonObject> readFileAsBlock(const QUrl &url)
{
    const QString path = url.toLocalFile();
    const QString extension = QFileInfo(path).suffix().toLower();
    const auto format = std::ranges::find(formats, extension, &Format::extension);
    return format == formats.end() ? textBlock(path) : binaryBlock(path, *format);
}

AttachedFile::AttachedFile(QUrl url)
    : m_url(std::move(url))
{
}

const std::optional<QJsonObject> &AttachedFile::block()
{
    if (!std::exchange(m_isRead, true))
        m_block = readFileAsBlock(m_url);
    return m_block;
}

} // namespace tirlo
