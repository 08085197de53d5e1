#include "MainQueue.h"

#include <QObject>

#include <utility>

namespace tirlo {

void WorkItem::cancel()
{
    if (m_action)
        m_action->work = nullptr;
}

bool WorkItem::isPending() const
{
    return m_action && m_action->work && (!m_action->hasOwner || m_action->owner);
}

WorkItem MainQueue::after(double seconds, const QObject *owner, std::function<void()> work,
                          double slack)
{
    WorkItem item;
    item.m_action = std::make_shared<WorkItem::Action>();
    item.m_action->work = std::move(work);
    item.m_action->owner = owner;
    item.m_action->hasOwner = owner != nullptr;

    schedule(seconds, slack, [item]() mutable {
        if (!item.isPending())
            return;
        // Taken out first, so that an action that asks about its own item finds it spent.
        std::exchange(item.m_action->work, nullptr)();
    });
    return item;
}

} // namespace tirlo
