#pragma once

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace tirlo {

/// A file that was dropped on the island.
struct DroppedFile
{
    QUrl url;
    QString name;

    bool operator==(const DroppedFile &) const = default;
};

/// One line of a search result.
struct ResultItem
{
    QString label;
    QString detail;
    std::optional<QString> url;

    bool operator==(const ResultItem &) const = default;
};

/// The content of the result card.
struct SearchResult
{
    QString title;
    QList<ResultItem> items;
    std::optional<QString> note;

    bool operator==(const SearchResult &) const = default;
};

} // namespace tirlo
