#pragma once

#include "XcbSelection.h"
#include "platform/MainQueue.h"
#include "platform/StatusItem.h"

#include <QDBusServiceWatcher>
#include <QMenu>
#include <QSystemTrayIcon>

#include <optional>

namespace tirlo {

/// The status item in the desktop's tray; it appears as soon as there is one.
class TrayStatusItem final : public StatusItem
{
public:
    /// The queue outlives the item.
    explicit TrayStatusItem(MainQueue &queue);

    void show(const QString &name, std::function<void()> open,
              const std::vector<StatusMenuRow> &menu) override;
    void setPicture(const QIcon &picture) override;

private:
    void look();
    void appear();

    MainQueue &m_queue;
    QString m_name;
    std::function<void()> m_open;
    QIcon m_picture;
    QMenu m_menu;
    QDBusServiceWatcher m_notifierArrival;
    XcbSelection m_xTray{"_NET_SYSTEM_TRAY_S", false};
    std::optional<QSystemTrayIcon> m_item;
};

} // namespace tirlo
