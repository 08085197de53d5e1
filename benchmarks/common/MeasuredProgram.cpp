#include "MeasuredProgram.h"

#include "hooks/Peer.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>

namespace {

constexpr auto supportFolder = "/Library/Application Support/Skerry/";
constexpr qint64 patience = 10000;

} // namespace

MeasuredProgram::MeasuredProgram(const QByteArray &settings)
{
    QDir().mkpath(m_home.path() + supportFolder);
    QFile file(m_home.path() + supportFolder + "settings.json");
    if (file.open(QIODevice::WriteOnly))
        file.write(settings);
    file.close();
    start(TIRLO_PROGRAM, {});
}

MeasuredProgram::MeasuredProgram(const QString &program, const QStringList &arguments)
{
    start(program, arguments);
}

MeasuredProgram::~MeasuredProgram()
{
    m_process.terminate();
    m_process.waitForFinished();
}

void MeasuredProgram::start(const QString &program, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", m_home.path());
    environment.remove("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_clock.start();
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

double MeasuredProgram::waitForSocket() const
{
    const QString path = m_home.path() + supportFolder + "qv.sock";
    while (!tirlo::Peer::connectedTo(path).isConnected() && m_clock.elapsed() < patience)
        QThread::msleep(1);
    return double(m_clock.nsecsElapsed()) * 1e-6;
}

double MeasuredProgram::waitForFirstFrame() const
{
    QScreen *screen = QGuiApplication::primaryScreen();
    const int middle = screen->geometry().width() / 2;
    const auto isSeen = [&] {
        return screen->grabWindow(0, middle, 2, 1, 1).toImage().pixelColor(0, 0) == Qt::black;
    };
    while (!isSeen() && m_clock.elapsed() < patience)
        QThread::msleep(1);
    return double(m_clock.nsecsElapsed()) * 1e-6;
}
