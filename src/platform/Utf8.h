#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

#include <optional>

namespace tirlo {

/// The text that the bytes hold; nothing when they are no valid UTF-8.
[[nodiscard]] inline std::optional<QString> textFromUtf8(QByteArrayView bytes)
{
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

} // namespace tirlo
