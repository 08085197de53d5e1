#include "Agent.h"

#include <QJsonDocument>

#include <signal.h>
#include <unistd.h>

#include <utility>

namespace tirlo::e2e {

namespace {

/// The tool call as agents spell it, joined with further members.
QJsonObject toolCall(const QString &tool, const QJsonObject &input, QJsonObject members = {})
{
    members.insert("tool_name", tool);
    members.insert("tool_input", input);
    return members;
}

} // namespace

HookRun::HookRun(const QString &script, const QStringList &arguments,
                 const QString &terminalProgram, const QByteArray &payload)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The script finds the socket under the home that it was installed in.
    environment.insert("HOME", script.section("/Library/", 0, 0));
    environment.insert("TERM_PROGRAM", terminalProgram);
    m_process.setProcessEnvironment(environment);
    // A group of its own, so that the wrapper and the relay can be ended together.
    m_process.setChildProcessModifier([] { setpgid(0, 0); });
    m_process.start(script, arguments);
    m_process.write(payload);
    m_process.closeWriteChannel();
    m_process.waitForStarted();
}

HookRun::~HookRun()
{
    if (isRunning())
        kill();
}

bool HookRun::waitForEnd(int milliseconds)
{
    return !isRunning() || m_process.waitForFinished(milliseconds);
}

QByteArray HookRun::output()
{
    m_output += m_process.readAllStandardOutput();
    return m_output;
}

void HookRun::kill()
{
    ::kill(-pid_t(m_process.processId()), SIGKILL);
    m_process.waitForFinished();
}

Agent::Agent(QString script, QString session, QString folder, QString tag, QString terminalProgram)
    : m_script(std::move(script))
    , m_session(std::move(session))
    , m_folder(std::move(folder))
    , m_tag(std::move(tag))
    , m_terminalProgram(std::move(terminalProgram))
{
}

std::unique_ptr<HookRun> Agent::start(const QString &event, const QJsonObject &members) const
{
    QJsonObject payload = members;
    payload.insert("hook_event_name", event);
    payload.insert("session_id", m_session);
    payload.insert("cwd", m_folder);
    const QStringList arguments = m_tag.isEmpty() ? QStringList() : QStringList{"--agent", m_tag};
    return std::make_unique<HookRun>(m_script, arguments, m_terminalProgram,
                                     QJsonDocument(payload).toJson(QJsonDocument::Compact));
}

bool Agent::send(const QString &event, const QJsonObject &members) const
{
    const auto run = start(event, members);
    return run->waitForEnd() && run->exitCode() == 0 && run->output().isEmpty();
}

bool Agent::sendTool(const QString &tool, const QJsonObject &input) const
{
    return send("PreToolUse", toolCall(tool, input));
}

std::unique_ptr<HookRun> Agent::askFor(const QString &tool, const QJsonObject &input,
                                       const QJsonObject &members) const
{
    return start("PermissionRequest", toolCall(tool, input, members));
}

} // namespace tirlo::e2e
