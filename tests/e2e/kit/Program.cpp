#include "Program.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

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

QString Program::supportFolder() const
{
    return m_home.path() + "/Library/Application Support/Skerry";
}

bool Program::waitForSocket() const
{
    const QByteArray path = QFile::encodeName(supportFolder() + "/qv.sock");
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 10000) {
        if (accepts(path))
            return true;
        QThread::msleep(20);
    }
    return false;
}

} // namespace tirlo::e2e
