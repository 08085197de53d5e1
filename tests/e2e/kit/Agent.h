#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>

#include <memory>

namespace tirlo::e2e {

/// One run of the hook script, as an agent starts it: JSON in, an optional answer out.
class HookRun
{
public:
    HookRun(const QString &script, const QStringList &arguments, const QString &terminalProgram,
            const QByteArray &payload);
    ~HookRun();

    /// Waits for the end; false when it takes longer than `milliseconds`.
    bool waitForEnd(int milliseconds = 10000);
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }
    /// All that the script wrote to its standard output.
    [[nodiscard]] QByteArray output();
    /// Ends the script and what it started at once, as an agent does that needs no answer any more.
    void kill();

private:
    QProcess m_process;
    QByteArray m_output;
};

/// A scripted agent: fills in the session and the folder, and runs its hooks.
class Agent
{
public:
    /// `tag` is what the hook line passes as --agent; empty passes none.
    Agent(QString script, QString session, QString folder, QString tag = {},
          QString terminalProgram = "vscode");

    /// Runs the hook for the event and returns at once.
    [[nodiscard]] std::unique_ptr<HookRun> start(const QString &event,
                                                 const QJsonObject &members = {}) const;
    /// Runs the hook to its end; false when it did not end with status 0 and no output.
    bool send(const QString &event, const QJsonObject &members = {}) const;
    /// Sends the event that comes before a tool runs.
    bool sendTool(const QString &tool, const QJsonObject &input) const;
    /// Asks for the permission to run the tool; the run lasts until the answer.
    [[nodiscard]] std::unique_ptr<HookRun> askFor(const QString &tool, const QJsonObject &input,
                                                  const QJsonObject &members = {}) const;

private:
    QString m_script;
    QString m_session;
    QString m_folder;
    QString m_tag;
    QString m_terminalProgram;
};

} // namespace tirlo::e2e
