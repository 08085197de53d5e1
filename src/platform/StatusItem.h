#pragma once

#include <QString>

#include <functional>
#include <vector>

class QIcon;

namespace tirlo {

/// One row of the status item's menu; a row without a title is a separator.
struct StatusMenuRow
{
    QString title;
    /// The shortcut shown beside the title, such as "Ctrl+Q"; may be empty.
    QString shortcut;
    std::function<void()> action;
};

/// The program's item in the desktop's bar, with a menu.
class StatusItem
{
public:
    virtual ~StatusItem() = default;

    /// Puts the item with its picture into the bar, as soon as there is a place for it.
    ///
    /// The name is what a screen reader says of the picture; `open` runs on a click with the left
    /// button, where the desktop does not show the menu on that as well.
    virtual void show(const QString &name, std::function<void()> open,
                      const std::vector<StatusMenuRow> &menu)
        = 0;

    /// Shows this picture from now on; the first one is set before show().
    virtual void setPicture(const QIcon &picture) = 0;
};

} // namespace tirlo
