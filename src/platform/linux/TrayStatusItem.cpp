#include "TrayStatusItem.h"

#include <QCursor>

namespace tirlo {

TrayStatusItem::TrayStatusItem()
{
    m_item.setContextMenu(&m_menu);
    // The menu is all there is to the item, so that either button shows it.
    QObject::connect(&m_item, &QSystemTrayIcon::activated, &m_menu,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             m_menu.popup(QCursor::pos());
                     });
}

void TrayStatusItem::show(const QIcon &picture, const QString &name,
                          const std::vector<StatusMenuRow> &menu)
{
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
    m_item.setIcon(picture);
    m_item.setToolTip(name);
    m_item.show();
}

} // namespace tirlo
