#include "Samples.h"

#include <QDir>
#include <QDirIterator>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace tirlo::soak {

namespace {

double entries(qint64 processId, const char *folder)
{
    const QDir all(QStringLiteral("/proc/%1/%2").arg(processId).arg(QLatin1String(folder)));
    return double(all.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

double logSize(const QString &home)
{
    constexpr double bytesPerKib = 1024;
    double bytes = 0;
    QDirIterator file(home + "/Library/Logs", QDir::Files, QDirIterator::Subdirectories);
    while (file.hasNext()) {
        file.next();
        bytes += double(file.fileInfo().size());
    }
    return bytes / bytesPerKib;
}

double mean(const std::vector<Sample> &samples, std::size_t from, std::size_t to,
            const std::function<double(const Sample &)> &column)
{
    double sum = 0;
    for (std::size_t i = from; i < to; ++i)
        sum += column(samples[i]);
    return sum / double(to - from);
}

/// A column and how much more the last third may hold than the middle one.
struct Column
{
    const char *name;
    std::function<double(const Sample &)> of;
    double share;
    double amount;
};

} // namespace

Sample takeSample(const e2e::Program &program, double minute)
{
    const qint64 id = program.processId();
    Sample sample{.minute = minute,
                  .usage = usageOf(id),
                  .descriptors = entries(id, "fd"),
                  .threads = entries(id, "task"),
                  .logs = logSize(program.home())};
    constexpr int looks = 20;
    for (int look = 0; look < looks; ++look) {
        QThread::msleep(3);
        sample.descriptors = std::min(sample.descriptors, entries(id, "fd"));
        sample.threads = std::min(sample.threads, entries(id, "task"));
    }
    return sample;
}

void printSamples(const std::vector<Sample> &samples)
{
    std::puts("\n| minute | RSS MiB | PSS MiB | descriptors | threads | logs KiB | CPU s |\n"
              "|---:|---:|---:|---:|---:|---:|---:|");
    for (const Sample &s : samples)
        std::printf("| %.1f | %.1f | %.1f | %.0f | %.0f | %.0f | %.1f |\n", s.minute,
                    s.usage.residentMemory, s.usage.proportionalMemory, s.descriptors, s.threads,
                    s.logs, s.usage.cpuSeconds);
}

bool areFlat(const std::vector<Sample> &samples)
{
    // Proportional memory is only printed: it moves with whatever else runs and shares pages.
    const Column columns[] = {
        {"RSS", [](const Sample &s) { return s.usage.residentMemory; }, 1.02, 1},
        {"descriptors", [](const Sample &s) { return s.descriptors; }, 1, 1},
        {"threads", [](const Sample &s) { return s.threads; }, 1, 1},
        // A log starts anew at 1 MiB, so its size at one moment says little; its bound is kept.
        {"logs over 1 MiB", [](const Sample &s) { return std::max(0.0, s.logs - 1025); }, 1, 0},
    };
    const std::size_t third = samples.size() / 3;
    if (third == 0)
        return false;
    bool flat = true;
    for (const Column &column : columns) {
        const double middle = mean(samples, third, 2 * third, column.of);
        const double last = mean(samples, samples.size() - third, samples.size(), column.of);
        const bool good = last <= middle * column.share + column.amount;
        std::printf("%-16s middle third %8.2f, last third %8.2f: %s\n", column.name, middle, last,
                    good ? "flat" : "GROWS");
        flat = flat && good;
    }
    return flat;
}

} // namespace tirlo::soak
