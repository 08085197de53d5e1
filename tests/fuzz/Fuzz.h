#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Ends the run with what did not hold; unlike assert(), in every build.
#define REQUIRE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            qCritical("%s:%d: does not hold: %s", __FILE__, __LINE__, #condition);                 \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

namespace tirlo {

/// Tries one input; what a target is made of.
void fuzz(const QByteArray &input);

/// A home for the process.
inline QString scratchHome()
{
    static const QTemporaryDir folder;
    return folder.path();
}

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    REQUIRE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace tirlo

// Each target includes this once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
    // In memory where possible: many files are written down to the disk.
    static const bool inMemory = QFile::exists("/dev/shm") && qputenv("TMPDIR", "/dev/shm");
    static_cast<void>(inMemory);
    tirlo::fuzz(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
