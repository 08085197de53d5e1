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

    /// Puts the item into the bar; a desktop without a place for it shows nothing.
    ///
    /// The name is what a screen reader says of the picture.
    virtual void show(const QIcon &picture, const QString &name,
                      const std::vector<StatusMenuRow> &menu)
        = 0;
};

} // namespace tirlo
