#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tirlo::e2e {

/// The real program, running in a home of its own until this object goes.
class Program
{
public:
    /// Starts the binary and waits up to ten seconds for its socket to answer; see isReady().
    explicit Program(const QString &binary);
    ~Program();

    [[nodiscard]] bool isReady() const { return m_ready; }
    /// Asks the program to end; false when it does not end in order within five seconds.
    bool stop();
    /// Starts the program again in the same home; false when its socket does not answer.
    [[nodiscard]] bool restart();
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Whether its last run was ended by a signal.
    [[nodiscard]] bool hasCrashed() const { return m_process.exitStatus() == QProcess::CrashExit; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] QString home() const { return m_home.path(); }
    /// The wrapper script that the program has written for the agents.
    [[nodiscard]] QString hookScript() const;
    /// All lines of the hook log so far.
    [[nodiscard]] QString log() const;

private:
    [[nodiscard]] QString supportFolder() const;
    [[nodiscard]] bool waitForSocket() const;

    [[nodiscard]] bool start();

    const QString m_binary;
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_ready = false;
};

} // namespace tirlo::e2e
