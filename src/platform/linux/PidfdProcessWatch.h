#pragma once

#include "platform/ProcessWatch.h"

namespace tirlo {

class MainQueue;

/// Watches processes by a descriptor each, which turns readable once its process has ended.
class PidfdProcessWatch final : public ProcessWatch
{
public:
    /// The queue outlives the watch.
    explicit PidfdProcessWatch(MainQueue &queue);

    [[nodiscard]] Handle watch(const ProcessId &process, std::function<void()> ended) override;

private:
    MainQueue &m_queue;
};

} // namespace tirlo
