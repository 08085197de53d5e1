#pragma once

#include "core/Paths.h"
#include "platform/FileDescriptor.h"

namespace tirlo {

/// Sees to it that one program runs a home, by a lock that the system frees however it ends.
class SingleInstance
{
public:
    explicit SingleInstance(const Paths &paths);

    /// Takes the place of the one program, for as long as this object is there; false when another
    /// has it.
    ///
    /// Where nothing can be locked, and where the lock was taken away, the other is found by the
    /// socket that it takes commands on.
    [[nodiscard]] bool claim();

    /// Whether a program has the place at this moment, though it may not take commands.
    [[nodiscard]] static bool isClaimed(const Paths &paths);

private:
    const Paths m_paths;
    FileDescriptor m_lock;
};

} // namespace tirlo
