#include "Demo.h"

#include "e2e/kit/Desktop.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription("Plays an agent's session on Tirlo's island.");
    parser.addHelpOption();
    const QCommandLineOption program("program", "The program to play against.", "file");
    const QCommandLineOption pictures("pictures", "Where the pictures go.", "folder");
    parser.addOptions({program, pictures});
    parser.process(application);
    if (!parser.isSet(program) || !parser.isSet(pictures))
        parser.showHelp(2);

    tirlo::Demo demo(parser.value(program), parser.value(pictures));
    if (!demo.play())
        return 1;
    if (tirlo::e2e::isVirtualDesktop())
        QTextStream(stdout) << "Pictures of each stage: " << parser.value(pictures) << Qt::endl;
    return 0;
}
