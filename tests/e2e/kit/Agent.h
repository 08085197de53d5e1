#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>
#include <memory>

#include <unistd.h>

namespace tirlo::e2e {

/// One run of a hook's command, as an agent starts it: JSON in, an optional answer out.
class HookRun
{
public:
    HookRun(const QString &home, const QString &command, const QStringList &arguments,
            const QString &terminalProgram, const QJsonObject &payload)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", home);
        environment.insert("TERM_PROGRAM", terminalProgram);
        m_process.setProcessEnvironment(environment);
        // A group of its own, so that the wrapper and the relay can be ended together.
        m_process.setChildProcessModifier([] { setpgid(0, 0); });
        m_process.start(command, arguments);
        m_process.write(QJsonDocument(payload).toJson(QJsonDocument::Compact));
        m_process.closeWriteChannel();
        m_process.waitForStarted();
    }

    ~HookRun()
    {
        if (isRunning())
            kill();
    }

    /// Waits for the end; false when it takes longer than `milliseconds`.
    bool waitForEnd(int milliseconds = 10000)
    {
        return !isRunning() || m_process.waitForFinished(milliseconds);
    }

    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }

    /// All that the command wrote to its standard output.
    [[nodiscard]] QByteArray output() { return m_output += m_process.readAllStandardOutput(); }

    /// Ends the script and what it started at once, as an agent does that needs no answer any more.
    void kill()
    {
        ::kill(-pid_t(m_process.processId()), SIGKILL);
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

/// A scripted agent: fills in the session and the folder, and runs its hooks.
struct Agent
{
    QString script;
    QString session;
    QString folder;
    /// What the hook line passes as --agent; empty passes none.
    QString tag = {};
    QString terminalProgram = "vscode";

    /// Runs the hook for the event and returns at once.
    [[nodiscard]] std::unique_ptr<HookRun> start(const QString &event,
                                                 QJsonObject members = {}) const
    {
        members.insert("hook_event_name", event);
        members.insert("session_id", session);
        members.insert("cwd", folder);
        // The script finds the socket under the home that it was installed in.
        return std::make_unique<HookRun>(
            script.section("/Library/", 0, 0), script,
            tag.isEmpty() ? QStringList() : QStringList{"--agent", tag}, terminalProgram, members);
    }

    /// Runs the hook to its end; false when it did not end with status 0 and no output.
    bool send(const QString &event, const QJsonObject &members = {}) const
    {
        const auto run = start(event, members);
        return run->waitForEnd() && run->exitCode() == 0 && run->output().isEmpty();
    }

    /// Sends the event that comes before a tool runs.
    bool sendTool(const QString &tool, const QJsonObject &input) const
    {
        return send("PreToolUse", {{"tool_name", tool}, {"tool_input", input}});
    }

    /// Asks for the permission to run the tool; the run lasts until the answer.
    [[nodiscard]] std::unique_ptr<HookRun> askFor(const QString &tool, const QJsonObject &input,
                                                  QJsonObject members = {}) const
    {
        members.insert("tool_name", tool);
        members.insert("tool_input", input);
        return start("PermissionRequest", members);
    }
};

} // namespace tirlo::e2e
