#include <QApplication>

#include <gtest/gtest.h>

#include <csignal>

// One application for all cases of a program: widgets, timers and notifiers need it.
int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
