#include "WebUrl.h"

namespace tirlo {

std::optional<QUrl> safeWebURL(const std::optional<QString> &text)
{
    if (!text)
        return std::nullopt;
    const QUrl url(text->trimmed(), QUrl::StrictMode);
    // QUrl keeps a scheme in lower case.
    const bool isWeb
        = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    if (!url.isValid() || !isWeb || url.host().isEmpty())
        return std::nullopt;
    return url;
}

} // namespace tirlo
