#pragma once

#include "Probe.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A program in a home of its own, measured from outside until this object goes.
class MeasuredProgram
{
public:
    /// Starts the real program with these settings in its store, a JSON object.
    explicit MeasuredProgram(const QByteArray &settings = "{}");

    /// Starts another one.
    MeasuredProgram(const QString &program, const QStringList &arguments);

    ~MeasuredProgram();

    /// Milliseconds from the start until the socket of the hooks answers, ten seconds at most.
    [[nodiscard]] double waitForSocket() const;

    /// Milliseconds from the start until the island is seen on the screen, ten seconds at most.
    [[nodiscard]] double waitForFirstFrame() const;

    /// Usage over the next seconds; memory as it is at the end.
    [[nodiscard]] Usage watch(int seconds) const
    {
        return usageOver(m_process.processId(), seconds);
    }

private:
    void start(const QString &program, const QStringList &arguments);

    QTemporaryDir m_home;
    QProcess m_process;
    QElapsedTimer m_clock;
};
