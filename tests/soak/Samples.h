#pragma once

#include "common/Probe.h"
#include "e2e/kit/Program.h"

#include <QDir>
#include <QDirIterator>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <vector>

namespace tirlo::soak {

/// What the program holds at one moment.
struct Sample
{
    double minute = 0;
    Usage usage;
    /// The least of several looks: what stays when no connection is being served.
    double descriptors = std::numeric_limits<double>::max();
    double threads = std::numeric_limits<double>::max();
    /// All logs together, in KiB.
    double logs = 0;
};

inline Sample takeSample(const e2e::Program &program, double minute)
{
    Sample sample{.minute = minute, .usage = usageOf(program.processId())};
    const auto entries = [&](const char *folder) {
        const QDir all(QString("/proc/%1/%2").arg(program.processId()).arg(folder));
        return double(all.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
    };
    for (int look = 0; look < 20; ++look) {
        QThread::msleep(3);
        sample.descriptors = std::min(sample.descriptors, entries("fd"));
        sample.threads = std::min(sample.threads, entries("task"));
    }
    QDirIterator file(program.home() + "/Library/Logs", QDir::Files, QDirIterator::Subdirectories);
    while (file.hasNext()) {
        file.next();
        sample.logs += double(file.fileInfo().size()) / 1024;
    }
    return sample;
}

/// Prints one row a sample.
inline void printSamples(const std::vector<Sample> &samples)
{
    std::puts("\n| minute | RSS MiB | PSS MiB | descriptors | threads | logs KiB | CPU s |\n"
              "|---:|---:|---:|---:|---:|---:|---:|");
    for (const Sample &s : samples)
        std::printf("| %.1f | %.1f | %.1f | %.0f | %.0f | %.0f | %.1f |\n", s.minute,
                    s.usage.residentMemory, s.usage.proportionalMemory, s.descriptors, s.threads,
                    s.logs, s.usage.cpuSeconds);
}

/// Prints whether each column's last third is level with its middle third; false when one is not.
inline bool areFlat(const std::vector<Sample> &samples)
{
    /// A column and how much more the last third may hold than the middle one.
    struct Column
    {
        const char *name;
        double (*of)(const Sample &);
        double share;
        double amount;
    };
    // Proportional memory is only printed: it moves with whatever else runs and shares pages.
    const Column columns[] = {
        {"RSS", [](const Sample &s) { return s.usage.residentMemory; }, 1.02, 1},
        {"descriptors", [](const Sample &s) { return s.descriptors; }, 1, 1},
        {"threads", [](const Sample &s) { return s.threads; }, 1, 1},
        // A log starts anew at 1 MiB, so its size at one moment says little; its bound is kept.
        {"logs over 1 MiB", [](const Sample &s) { return std::max(0.0, s.logs - 1025); }, 1, 0},
    };
    const std::size_t third = samples.size() / 3;
    bool flat = third > 0;
    for (const auto &[name, of, share, amount] : columns) {
        double middle = 0;
        double last = 0;
        for (std::size_t i = 0; i < third; ++i) {
            middle += of(samples[third + i]) / double(third);
            last += of(samples[samples.size() - third + i]) / double(third);
        }
        const bool good = last <= middle * share + amount;
        std::printf("%-16s middle third %8.2f, last third %8.2f: %s\n", name, middle, last,
                    good ? "flat" : "GROWS");
        flat = flat && good;
    }
    return flat;
}

} // namespace tirlo::soak
