#include "CardSight.h"

#include "platform/MainQueue.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr double seenSeconds = 0.4;

} // namespace

CardSight::CardSight(const MainQueue &queue)
    : m_queue(queue)
{
}

void CardSight::arrived()
{
    if (!m_arrival)
        m_arrival = m_queue.mediaTime();
}

void CardSight::showsAnother()
{
    m_change = m_queue.mediaTime();
}

bool CardSight::hasBeenSeen() const
{
    return m_arrival && m_queue.mediaTime() - std::max(*m_arrival, m_change) >= seenSeconds;
}

} // namespace tirlo
