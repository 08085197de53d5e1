#pragma once

#include "ChatProvider.h"

#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>
#include <variant>

namespace tirlo {

/// One line of the chat.
struct ChatMessage
{
    QUuid id;
    ChatRole role = ChatRole::user;
    QString content;

    bool operator==(const ChatMessage &) const = default;
};

/// A window that a prompt is about.
struct WindowContext
{
    QString appName;
    QString title;
    std::optional<QString> url;

    bool operator==(const WindowContext &) const = default;
};

/// A file that a prompt is about.
struct FileContext
{
    QString name;
    std::optional<QUrl> fileURL;

    bool operator==(const FileContext &) const = default;
};

/// What a prompt is about.
using PromptContext = std::variant<WindowContext, FileContext>;

/// One model that a chat provider offers.
struct ProviderModel
{
    QString id;
    QString label;

    bool operator==(const ProviderModel &) const = default;
};

} // namespace tirlo
