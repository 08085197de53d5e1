#include "FrameClock.h"

#include "FrameDriver.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace tirlo {

// The subscribers, held by the clock and, for the length of a frame, by the frame itself.
class FrameClock::Registry
{
public:
    explicit Registry(FrameDriver &driver)
        : m_driver(&driver)
    {
    }

    std::uint64_t add(Callback callback)
    {
        // Each on the heap by itself: a callback must not move while it runs and others join.
        m_entries.push_back(std::make_unique<Entry>(Entry{++m_lastId, std::move(callback)}));
        ++m_liveCount;
        settle();
        return m_lastId;
    }

    void remove(std::uint64_t id)
    {
        const auto found = std::ranges::find_if(
            m_entries, [id](const auto &entry) { return entry->id == id && entry->isLive; });
        if (found == m_entries.end())
            return;
        (*found)->isLive = false;
        --m_liveCount;
        settle();
    }

    void tick(double mediaTime)
    {
        ++m_depth;
        const std::size_t count = m_entries.size();
        for (std::size_t index = 0; index < count && m_driver; ++index) {
            if (m_entries[index]->isLive)
                m_entries[index]->callback(mediaTime);
        }
        --m_depth;
        settle();
    }

    void setRate(double framesPerSecond)
    {
        const bool isSane = framesPerSecond >= 1 && framesPerSecond <= 1000;
        const double rate = isSane ? framesPerSecond : defaultRate;
        if (rate == m_rate)
            return;
        m_rate = rate;
        if (m_isRunning)
            m_driver->start(m_rate);
    }

    void close()
    {
        if (m_isRunning)
            m_driver->stop();
        m_driver = nullptr;
    }

private:
    static constexpr double defaultRate = 60;

    struct Entry
    {
        std::uint64_t id;
        Callback callback;
        bool isLive = true;
    };

    // Buries the dropped and sets the driver to what is wanted, once no callback is running.
    void settle()
    {
        if (m_depth > 0 || !m_driver)
            return;

        const bool isWanted = m_liveCount > 0;
        if (isWanted != m_isRunning) {
            m_isRunning = isWanted;
            if (isWanted)
                m_driver->start(m_rate);
            else
                m_driver->stop();
        }
        if (m_entries.size() == m_liveCount)
            return;

        // Moved out before they die: a callback may own subscriptions, which come back here.
        const auto isLive = [](const auto &entry) { return entry->isLive; };
        const auto dead = std::stable_partition(m_entries.begin(), m_entries.end(), isLive);
        const std::vector<std::unique_ptr<Entry>> buried(std::make_move_iterator(dead),
                                                         std::make_move_iterator(m_entries.end()));
        m_entries.erase(dead, m_entries.end());
    }

    FrameDriver *m_driver;
    std::vector<std::unique_ptr<Entry>> m_entries;
    std::size_t m_liveCount = 0;
    std::uint64_t m_lastId = 0;
    int m_depth = 0;
    double m_rate = defaultRate;
    bool m_isRunning = false;
};

FrameClock::Subscription::Subscription(Subscription &&other) noexcept
    : m_registry(std::move(other.m_registry))
    , m_id(std::exchange(other.m_id, 0))
{
}

FrameClock::Subscription &FrameClock::Subscription::operator=(Subscription &&other) noexcept
{
    if (this == &other)
        return *this;
    reset();
    m_registry = std::move(other.m_registry);
    m_id = std::exchange(other.m_id, 0);
    return *this;
}

FrameClock::Subscription::~Subscription()
{
    reset();
}

void FrameClock::Subscription::reset()
{
    // Emptied first: ending the callback may destroy the object that this handle is part of.
    const auto registry = std::exchange(m_registry, {}).lock();
    const auto id = std::exchange(m_id, 0);
    if (registry)
        registry->remove(id);
}

bool FrameClock::Subscription::isActive() const
{
    return !m_registry.expired();
}

FrameClock::FrameClock(const MainQueue &queue, FrameDriver &driver)
    : m_queue(queue)
    , m_registry(std::make_shared<Registry>(driver))
{
    driver.onFrame = [&queue, registry = std::weak_ptr(m_registry)] {
        if (const auto alive = registry.lock())
            alive->tick(queue.mediaTime());
    };
}

FrameClock::~FrameClock()
{
    m_registry->close();
}

FrameClock::Subscription FrameClock::subscribe(Callback callback)
{
    Subscription subscription;
    subscription.m_registry = m_registry;
    subscription.m_id = m_registry->add(std::move(callback));
    return subscription;
}

double FrameClock::now() const
{
    return m_queue.mediaTime();
}

void FrameClock::setRate(double framesPerSecond)
{
    m_registry->setRate(framesPerSecond);
}

Animation FrameClock::permitted(const Animation &animation) const
{
    return m_reducesMotion ? Animation::none() : animation;
}

} // namespace tirlo
