#include "GreetingSheets.h"
#include "Sheets.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

// Draws every face of the mascot to PNG sheets, at device pixel ratios 1 and 2, and the greeting
// as single frames to the folder greeting-frames in it:
//   tirlo-mascot-gallery OUTDIR
int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2) {
        std::fprintf(stderr, "usage: tirlo-mascot-gallery OUTDIR\n");
        return 2;
    }

    const QDir directory(arguments[1]);
    if (!directory.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "tirlo-mascot-gallery: can't make %s\n", qPrintable(arguments[1]));
        return 1;
    }
    for (const tirlo::Sheet &sheet : tirlo::allSheets()) {
        for (const int ratio : {1, 2}) {
            const QString file = QStringLiteral("%1-%2x.png").arg(sheet.name()).arg(ratio);
            if (!sheet.render(ratio).save(directory.filePath(file))) {
                std::fprintf(stderr, "tirlo-mascot-gallery: can't write %s\n", qPrintable(file));
                return 1;
            }
        }
    }
    if (!tirlo::writeGreetingFrames(directory.filePath(QStringLiteral("greeting-frames")))) {
        std::fprintf(stderr, "tirlo-mascot-gallery: can't write the greeting's frames\n");
        return 1;
    }
    return 0;
}
