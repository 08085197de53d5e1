#pragma once

#include "platform/StatusItem.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace tirlo {

/// The status item in the desktop's tray; it appears as soon as there is one.
class TrayStatusItem final : public StatusItem
{
public:
    TrayStatusItem();

    void show(const QIcon &picture, const QString &name,
              const std::vector<StatusMenuRow> &menu) override;

private:
    QMenu m_menu;
    QSystemTrayIcon m_item;
};

} // namespace tirlo
