#pragma once

#include "platform/StatusItem.h"

#include <QIcon>

#include <algorithm>

namespace tirlo {

/// A status item in no bar, whose rows a test can read and choose.
class FakeStatusItem final : public StatusItem
{
public:
    void show(const QIcon &itemPicture, const QString &itemName,
              const std::vector<StatusMenuRow> &menu) override
    {
        picture = itemPicture;
        name = itemName;
        rows = menu;
    }

    /// Chooses the row with the title; false when there is none.
    bool choose(const QString &title)
    {
        const auto row = std::ranges::find(rows, title, &StatusMenuRow::title);
        if (row == rows.end() || !row->action)
            return false;
        row->action();
        return true;
    }

    QIcon picture;
    QString name;
    std::vector<StatusMenuRow> rows;
};

} // namespace tirlo
