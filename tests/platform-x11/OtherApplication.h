#pragma once

#include "e2e/kit/Desktop.h"
#include "platform/linux/EwmhWindows.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QWidget>

#include <cstring>

namespace tirlo::x11test {

/// Another program on the desktop: this test program once more, showing one plain window.
class OtherApplication
{
public:
    enum class Kind {
        plain,
        fullScreen,
        /// No window manager looks after it.
        unmanaged,
        /// As a locker of the screen: it has the keyboard, too.
        grabbing,
        /// Reserves its height at the top of the screen.
        panel,
    };

    /// Starts it with windows of the class and waits until it is the active application, if a
    /// window manager looks after it.
    OtherApplication(const QString &windowClass, const QRect &geometry, Kind kind = Kind::plain)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(QCoreApplication::applicationFilePath(),
                        {mark, windowClass, QString::number(geometry.x()),
                         QString::number(geometry.y()), QString::number(geometry.width()),
                         QString::number(geometry.height()), QString::number(int(kind))});
        m_process.waitForStarted();
        if (kind == Kind::plain || kind == Kind::fullScreen)
            e2e::waitUntil([this] { return isActive(); });
    }

    ~OtherApplication()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] bool isActive() const { return activeProcess() == processId(); }

    /// The process whose window is active, 0 for none.
    [[nodiscard]] static qint64 activeProcess()
    {
        const EwmhWindows windows;
        const auto active = windows.activeWindow();
        return active ? windows.applicationOf(active).processId : 0;
    }

    /// Makes a desktop entry that starts this program with windows of the class.
    static void install(const QString &entryId, const QString &windowClass, const QString &name)
    {
        const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + "/applications";
        QDir().mkpath(folder);
        QFile entry(folder + "/" + entryId + ".desktop");
        if (!entry.open(QIODevice::WriteOnly))
            return;
        const QString text
            = "[Desktop Entry]\nType=Application\nName=%1\nExec=%2 %3 %4 0 0 200 200 %U\n";
        entry.write(
            text.arg(name, QCoreApplication::applicationFilePath(), mark, windowClass).toUtf8());
    }

    /// True when main() is asked to be the other program.
    [[nodiscard]] static bool isWanted(int argc, char *argv[])
    {
        return argc >= 7 && std::strcmp(argv[1], mark) == 0;
    }

    static int run(int argc, char *argv[])
    {
        QCoreApplication::setApplicationName(argv[2]);
        QApplication application(argc, argv);
        QWidget window;
        window.setGeometry(std::atoi(argv[3]), std::atoi(argv[4]), std::atoi(argv[5]),
                           std::atoi(argv[6]));
        window.setStyleSheet("background: #204060");
        const auto kind = Kind(argc > 7 ? std::atoi(argv[7]) : 0);
        if (kind == Kind::unmanaged || kind == Kind::grabbing)
            window.setWindowFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        if (kind == Kind::panel)
            reserveTop(window);
        if (kind == Kind::fullScreen)
            window.showFullScreen();
        else
            window.show();
        if (kind == Kind::grabbing)
            window.grabKeyboard();
        return QApplication::exec();
    }

private:
    static void reserveTop(QWidget &window)
    {
        window.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        const X11 x11;
        const std::uint32_t strut[]{0, 0, std::uint32_t(window.height()), 0, 0, 0, 0,
                                    0, 0, std::uint32_t(window.width()),  0, 0};
        xcb_change_property(x11.connection(), XCB_PROP_MODE_REPLACE, xcb_window_t(window.winId()),
                            x11.atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL, 32,
                            std::uint32_t(std::size(strut)), strut);
    }

    static constexpr const char *mark = "--other-application";

    QProcess m_process;
};

} // namespace tirlo::x11test
