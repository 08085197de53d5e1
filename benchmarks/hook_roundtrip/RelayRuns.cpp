#include "RelayRuns.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

namespace tirlo {

namespace {

const QByteArray hook = R"({"hook_event_name":"PreToolUse","session_id":"a3c1","cwd":"/w/project",)"
                        R"("tool_name":"Bash","tool_input":{"command":"git status"}})";

double millisecondsOf(const QString &home, const QString &input, const QString &program,
                      const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("TERM_PROGRAM"), QStringLiteral("vscode"));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(input);

    QElapsedTimer elapsed;
    elapsed.start();
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s fails", qUtf8Printable(program));
    return double(elapsed.nsecsElapsed()) / 1e6;
}

} // namespace

RelayTimes timeRelayRuns(const QString &home, const QString &relay, int runs)
{
    const QString input = home + QStringLiteral("/hook.json");
    QFile file(input);
    if (!file.open(QIODevice::WriteOnly) || file.write(hook) != hook.size())
        qFatal("can't write %s", qUtf8Printable(input));
    file.close();

    RelayTimes times;
    for (int i = 0; i < runs; ++i) {
        times.interpreter.push_back(
            millisecondsOf(home, input, QStringLiteral("sh"),
                           {QStringLiteral("-c"), QStringLiteral("/usr/bin/python3 -c pass")}));
        times.relay.push_back(millisecondsOf(home, input, relay, {}));
    }
    return times;
}

} // namespace tirlo
