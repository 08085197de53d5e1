#pragma once

#include "common/Probe.h"
#include "e2e/kit/Program.h"

#include <QDir>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace tirlo::soak {

/// What the program holds at one moment, a value a column.
using Sample = std::array<double, 3>;

/// A column and how much more the last third may hold than the middle one.
struct Column
{
    const char *name;
    double share;
    double amount;
};

inline constexpr std::array<Column, 3> columns{{
    {"RSS MiB", 1.02, 1},
    {"descriptors", 1, 1},
    {"threads", 1, 1},
}};

/// Takes a sample and prints it.
inline Sample takeSample(const e2e::Program &program, double minute)
{
    const auto entries = [&](const char *folder) {
        const QDir all(QString("/proc/%1/%2").arg(program.processId()).arg(folder));
        return double(all.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
    };
    Sample sample{usageOf(program.processId()).residentMemory, entries("fd"), entries("task")};
    // The least of several looks: what stays when no connection is being served.
    for (int look = 0; look < 20; ++look) {
        QThread::msleep(3);
        sample[1] = std::min(sample[1], entries("fd"));
        sample[2] = std::min(sample[2], entries("task"));
    }
    std::printf("%5.1f min", minute);
    for (std::size_t i = 0; i < columns.size(); ++i)
        std::printf(", %.1f %s", sample[i], columns[i].name);
    std::puts("");
    return sample;
}

/// Prints whether each column's last third is level with its middle third; false when one is not.
inline bool areFlat(const std::vector<Sample> &samples)
{
    const std::size_t third = samples.size() / 3;
    bool flat = third > 0;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        double middle = 0;
        double last = 0;
        for (std::size_t i = 0; i < third; ++i) {
            middle += samples[third + i][column] / double(third);
            last += samples[samples.size() - third + i][column] / double(third);
        }
        const auto &[name, share, amount] = columns[column];
        const bool good = last <= middle * share + amount;
        std::printf("%-20s middle third %8.2f, last third %8.2f: %s\n", name, middle, last,
                    good ? "flat" : "GROWS");
        flat = flat && good;
    }
    return flat;
}

} // namespace tirlo::soak
