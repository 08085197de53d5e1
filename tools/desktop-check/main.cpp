// Tries the island on the desktop that it is run on and prints a table of what it saw.
//
//   tools/desktops KIND build/release/tools/desktop-check/desktop-check [--idle] FOLDER
//
// The pictures go to FOLDER. With --idle it waits until the island has hidden itself as well. It
// ends with 1 where something is not as it should be.

#include "Trial.h"
#include "e2e/kit/Desktop.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool waitsForIdle = arguments.removeAll("--idle") > 0;
    if (!tirlo::e2e::isVirtualDesktop() || arguments.size() != 1) {
        std::fputs("usage: tools/desktops KIND desktop-check [--idle] FOLDER\n", stderr);
        return 2;
    }
    QApplication::setQuitOnLastWindowClosed(false);
    const QString desktop = qEnvironmentVariable("TIRLO_DESKTOP");
    const auto findings = tirlo::Trial(TIRLO_PROGRAM, desktop, arguments.first()).run(waitsForIdle);
    for (const tirlo::Finding &finding : findings)
        std::printf("| %s | %s | %s%s |\n", qPrintable(desktop), qPrintable(finding.what),
                    qPrintable(finding.seen), finding.isGood ? "" : " ✗");
    const auto isBad = [](const tirlo::Finding &finding) { return !finding.isGood; };
    return std::any_of(findings.begin(), findings.end(), isBad) ? 1 : 0;
}
