#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

namespace tirlo {

/// One process for good: a number alone is used anew once its process has gone.
struct ProcessId
{
    std::int64_t pid = 0;
    /// When it started, in clock ticks since the machine did.
    std::uint64_t start = 0;
    /// The space that the number is from, as the system names it; "" for our own. A sandbox has a
    /// space of its own.
    QString space;

    bool operator==(const ProcessId &) const = default;
};

/// Tells when other processes of the same user end.
class ProcessWatch
{
public:
    /// What keeps a watch going; without it nothing more is told.
    using Handle = std::shared_ptr<void>;

    virtual ~ProcessWatch() = default;

    /// Calls `ended` on the main thread, once and after this has returned, when the process has
    /// ended, be it before now: its number gone or used anew.
    ///
    /// Null for what is never told: another user's process, one of another space, or a system that
    /// can't watch.
    [[nodiscard]] virtual Handle watch(const ProcessId &process, std::function<void()> ended) = 0;
};

} // namespace tirlo
