#include "TrayStatusItem.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <utility>

namespace tirlo {

namespace {

const QString notifierService = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Seconds within which a desktop that has both kinds of tray has brought up the better one too.
constexpr double trayStartTime = 2;

bool hasNotifier()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(notifierService);
}

} // namespace

TrayStatusItem::TrayStatusItem(MainQueue &queue)
    : m_queue(queue)
    , m_notifierArrival(notifierService, QDBusConnection::sessionBus(),
                        QDBusServiceWatcher::WatchForRegistration)
{
    QObject::connect(&m_notifierArrival, &QDBusServiceWatcher::serviceRegistered, &m_menu,
                     [this] { look(); });
    QObject::connect(&m_xTray, &XcbSelection::changed, &m_menu, [this] { look(); });
}

void TrayStatusItem::show(const QString &name, std::function<void()> open,
                          const std::vector<StatusMenuRow> &menu)
{
    m_name = name;
    m_open = std::move(open);
    m_menu.clear();
    for (const StatusMenuRow &row : menu) {
        if (row.title.isEmpty()) {
            m_menu.addSeparator();
            continue;
        }
        QAction *action = m_menu.addAction(row.title);
        action->setShortcut(QKeySequence(row.shortcut));
        QObject::connect(action, &QAction::triggered, action, row.action);
    }
    look();
}

void TrayStatusItem::setPicture(const QIcon &picture)
{
    m_picture = picture;
    if (m_item)
        m_item->setIcon(picture);
}

/// Qt settles at its first item, and for good, on the kind of tray that it then finds. So there is
/// none before there is a tray.
void TrayStatusItem::look()
{
    if (m_name.isEmpty() || m_item)
        return;
    if (hasNotifier())
        appear();
    else if (m_xTray.isOwned())
        m_queue.after(trayStartTime, &m_menu, [this] {
            if (!m_item && (m_xTray.isOwned() || hasNotifier()))
                appear();
        });
}

void TrayStatusItem::appear()
{
    m_item.emplace();
    QObject::connect(&*m_item, &QSystemTrayIcon::activated, &m_menu,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             m_open();
                     });
    m_item->setContextMenu(&m_menu);
    m_item->setIcon(m_picture);
    m_item->setToolTip(m_name);
    m_item->show();
}

} // namespace tirlo
