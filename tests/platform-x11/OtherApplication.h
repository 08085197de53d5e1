#pragma once

#include <QProcess>
#include <QRect>
#include <QString>

namespace tirlo::x11test {

/// Another program on the desktop: this test program once more, showing one plain window.
class OtherApplication
{
public:
    /// Starts it with windows of the class and waits until it is the active application.
    OtherApplication(const QString &windowClass, const QRect &geometry);
    ~OtherApplication();

    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] bool isActive() const { return activeProcess() == processId(); }

    /// The process whose window is active, 0 for none.
    [[nodiscard]] static qint64 activeProcess();

    /// Makes a desktop entry that starts this program with windows of the class.
    static void install(const QString &entryId, const QString &windowClass, const QString &name);

    /// True when main() is asked to be the other program.
    [[nodiscard]] static bool isWanted(int argc, char *argv[]);
    static int run(int argc, char *argv[]);

private:
    QProcess m_process;
};

} // namespace tirlo::x11test
