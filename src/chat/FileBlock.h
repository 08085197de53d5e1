#pragma once

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tirlo {

/// A block of text.
[[nodiscard]] QJsonObject textBlock(const QString &text);

/// The file as a block of a message: a document, a picture or its text, by its extension.
///
/// Nothing when it can't be read or has more than 100 MB, when it is text of more than 200,000
/// bytes or no UTF-8, and after a stop. It may take a while.
[[nodiscard]] std::optional<QJsonObject> readFileAsBlock(const QUrl &url,
                                                         const std::stop_token &stop = {});

/// A file that goes along with a turn; it is read when its block is first asked for.
///
/// From then on it belongs to the thread that asked. A stop ends the reading of it.
class AttachedFile
{
public:
    AttachedFile(QUrl url, std::stop_token stop);

    /// True if its block is one of text, should it have any; it need not be read to tell.
    [[nodiscard]] bool isText() const;
    [[nodiscard]] const std::optional<QJsonObject> &block();

private:
    const QUrl m_url;
    const std::stop_token m_stop;
    bool m_isRead = false;
    std::optional<QJsonObject> m_block;
};

} // namespace tirlo
