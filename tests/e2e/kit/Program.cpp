#include "Program.h"

#include "Desktop.h"
#include "Island.h"

#include <QElapsedTimer>
#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tirlo::e2e {

namespace {

bool accepts(const QByteArray &socketPath)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= qsizetype(sizeof address.sun_path))
        return false;
    socketPath.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected
        = connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(fd);
    return connected;
}

} // namespace

Program::Program(const QString &binary)
    : m_binary(binary)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The X server's cookie lies in the real home.
    if (!environment.contains("XAUTHORITY"))
        environment.insert("XAUTHORITY", environment.value("HOME") + "/.Xauthority");
    environment.insert("HOME", m_home.path());
    environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_ready = start();
}

Program::~Program()
{
    if (isRunning() && !stop()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

bool Program::stop()
{
    m_process.terminate();
    return m_process.waitForFinished(5000) && m_process.exitStatus() == QProcess::NormalExit
        && m_process.exitCode() == 0;
}

bool Program::restart()
{
    m_ready = start();
    return m_ready;
}

bool Program::start()
{
    m_process.start(m_binary, QStringList());
    return m_process.waitForStarted() && waitForSocket();
}

QString Program::hookScript() const
{
    return supportFolder() + "/qv-hook";
}

QString Program::log() const
{
    QFile file(m_home.path() + "/Library/Logs/Skerry/qv.log");
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool Program::shows(const std::string &text) const
{
    return showsText(processId(), text);
}

bool Program::waitForText(const std::string &text) const
{
    return waitUntil([&] { return shows(text); }, patience);
}

bool Program::waitForNoText(const std::string &text) const
{
    return waitUntil([&] { return !shows(text); }, patience);
}

std::optional<AccessibleNode> Program::button(const std::string &name,
                                              const std::string &role) const
{
    return findNode(processId(), role, name);
}

bool Program::waitForButton(const std::string &name) const
{
    return waitUntil([&] { return button(name).has_value(); }, patience);
}

bool Program::clickButton(const std::string &name, const std::string &role) const
{
    constexpr int restMilliseconds = 250;
    QPoint middle;
    int width = 0;
    QElapsedTimer rest;
    const auto isAtRest = [&] {
        const auto found = button(name, role);
        if (!found)
            return false;
        const QPoint now(found->x + found->width / 2, found->y + found->height / 2);
        if (!rest.isValid() || now != middle || islandWidth() != width)
            rest.start();
        middle = now;
        width = islandWidth();
        return rest.elapsed() > restMilliseconds;
    };
    if (!waitUntil(isAtRest, patience))
        return false;
    clickAt(middle.x(), middle.y());
    return true;
}

QString Program::supportFolder() const
{
    return m_home.path() + "/Library/Application Support/Skerry";
}

bool Program::waitForSocket() const
{
    const QByteArray path = QFile::encodeName(supportFolder() + "/qv.sock");
    return waitUntil([&] { return accepts(path); }, patience);
}

} // namespace tirlo::e2e
