#pragma once

#include "platform/ProcessWatch.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tirlo {

/// Processes that end when a test says so.
class FakeProcessWatch final : public ProcessWatch
{
public:
    [[nodiscard]] Handle watch(const ProcessId &process, std::function<void()> ended) override
    {
        auto handle = std::make_shared<int>();
        m_watched.push_back({process, handle, std::move(ended)});
        return handle;
    }

    /// Lets the process end.
    void end(const ProcessId &process)
    {
        // What is told may begin or end other watches.
        for (const Watched &watched : std::vector(m_watched)) {
            if (watched.process == process && !watched.handle.expired())
                watched.ended();
        }
        std::erase_if(m_watched, [&](const Watched &each) { return each.process == process; });
    }

    [[nodiscard]] auto count() const
    {
        return std::ranges::count_if(m_watched,
                                     [](const Watched &each) { return !each.handle.expired(); });
    }

private:
    struct Watched
    {
        ProcessId process;
        std::weak_ptr<void> handle;
        std::function<void()> ended;
    };

    std::vector<Watched> m_watched;
};

} // namespace tirlo
