#pragma once

#include "common/Probe.h"
#include "e2e/kit/Program.h"

#include <vector>

namespace tirlo::soak {

/// What the program holds at one moment.
struct Sample
{
    double minute = 0;
    Usage usage;
    /// The least of several looks: what stays when no connection is being served.
    double descriptors = 0;
    double threads = 0;
    /// All logs together, in KiB.
    double logs = 0;
};

[[nodiscard]] Sample takeSample(const e2e::Program &program, double minute);

/// Prints one row a sample.
void printSamples(const std::vector<Sample> &samples);

/// Prints whether each column's last third is level with its middle third; false when one is not.
[[nodiscard]] bool areFlat(const std::vector<Sample> &samples);

} // namespace tirlo::soak
