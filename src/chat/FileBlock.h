#pragma once

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace tirlo {

/// The file as a block of a message: a document, a picture or its text, by its extension.
///
/// Nothing when it can't be read, and when it is text of more than 200,000 bytes or no UTF-8. It
/// may take a while.
[[nodiscard]] std::optional<QJsonObject> readFileAsBlock(const QUrl &url);

/// A file that goes along with a turn; it is read when its block is first asked for.
///
/// From then on it belongs to the thread that asked.
class AttachedFile
{
public:
    explicit AttachedFile(QUrl url);

    [[nodiscard]] const std::optional<QJsonObject> &block();

private:
    const QUrl m_url;
    bool m_isRead = false;
    std::optional<QJsonObject> m_block;
};

} // namespace tirlo
