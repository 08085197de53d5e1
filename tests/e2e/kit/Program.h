#pragma once

#include "AccessibleTree.h"
#include "Desktop.h"
#include "Island.h"
#include "hooks/Peer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

namespace tirlo::e2e {

/// Milliseconds: two busy processors are slow.
inline constexpr int patience = 10000;

/// The real program, running in a home of its own until this object goes, and its user.
class Program
{
public:
    /// Starts the binary, with these further variables in its environment, and waits for its socket
    /// to answer; see isReady().
    explicit Program(const QString &binary, const QMap<QString, QString> &variables = {})
        : m_binary(binary)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The X server's cookie lies in the real home.
        if (!environment.contains("XAUTHORITY"))
            environment.insert("XAUTHORITY", environment.value("HOME") + "/.Xauthority");
        environment.insert("HOME", m_home.path());
        environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        for (auto it = variables.begin(); it != variables.end(); ++it)
            environment.insert(it.key(), it.value());
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        static_cast<void>(start());
    }

    ~Program()
    {
        if (isRunning() && !stop()) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    /// Starts the program, again in the same home; false when its socket does not answer.
    [[nodiscard]] bool start()
    {
        m_process.start(m_binary, QStringList());
        const auto answers = [this] { return Peer::connectedTo(socketPath()).isConnected(); };
        m_ready = m_process.waitForStarted() && waitUntil(answers, patience);
        return m_ready;
    }

    /// Asks the program to end; false when it does not end in order within five seconds.
    bool stop()
    {
        m_process.terminate();
        return m_process.waitForFinished(5000) && m_process.exitStatus() == QProcess::NormalExit
            && m_process.exitCode() == 0;
    }

    [[nodiscard]] bool isReady() const { return m_ready; }
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Whether its last run was ended by a signal.
    [[nodiscard]] bool hasCrashed() const { return m_process.exitStatus() == QProcess::CrashExit; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] QString home() const { return m_home.path(); }
    [[nodiscard]] QString supportFolder() const
    {
        return home() + "/Library/Application Support/Skerry";
    }
    [[nodiscard]] QString socketPath() const { return supportFolder() + "/qv.sock"; }
    /// The wrapper script that the program has written for the agents.
    [[nodiscard]] QString hookScript() const { return supportFolder() + "/qv-hook"; }
    /// All lines of the hook log so far.
    [[nodiscard]] QString log() const
    {
        QFile file(home() + "/Library/Logs/Skerry/qv.log");
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    /// Whether a control on show has a name that holds the text.
    [[nodiscard]] bool shows(const std::string &text) const { return showsText(processId(), text); }
    [[nodiscard]] bool waitForText(const std::string &text) const
    {
        return waitUntil([&] { return shows(text); }, patience);
    }
    [[nodiscard]] bool waitForNoText(const std::string &text) const
    {
        return waitUntil([&] { return !shows(text); }, patience);
    }

    /// The first button on show of that name.
    [[nodiscard]] std::optional<AccessibleNode> button(const std::string &name,
                                                       const std::string &role
                                                       = "push button") const
    {
        return findNode(processId(), role, name);
    }
    [[nodiscard]] bool waitForButton(const std::string &name) const
    {
        return waitUntil([&] { return button(name).has_value(); }, patience);
    }

    /// Clicks the middle of the button once it and the island are at rest; false if that never is.
    [[nodiscard]] bool clickButton(const std::string &name,
                                   const std::string &role = "push button") const
    {
        QPoint middle;
        int width = 0;
        QElapsedTimer rest;
        const auto isAtRest = [&] {
            const auto found = button(name, role);
            if (!found)
                return false;
            const QPoint now = found->place.center();
            if (!rest.isValid() || now != middle || islandWidth() != width)
                rest.start();
            middle = now;
            width = islandWidth();
            // A button of a request acts only once its card has been seen.
            return rest.elapsed() > 1200;
        };
        if (!waitUntil(isAtRest, patience))
            return false;
        clickAt(middle.x(), middle.y());
        return true;
    }

private:
    const QString m_binary;
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_ready = false;
};

} // namespace tirlo::e2e
