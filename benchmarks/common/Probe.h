#pragma once

#include <QString>

/// What the kernel says of a running process, all its threads together.
struct Usage
{
    /// Processor time in seconds, and how often its threads were switched to.
    double cpuSeconds = 0;
    double contextSwitches = 0;
    /// Resident and proportional memory in MiB.
    double residentMemory = 0;
    double proportionalMemory = 0;
};

/// Reads the usage of the process so far; zeros when it is gone.
[[nodiscard]] Usage usageOf(qint64 processId);

/// Reads what it uses over the next seconds; memory as it is at their end.
[[nodiscard]] Usage usageOver(qint64 processId, int seconds);
