#include <QApplication>

#include <gtest/gtest.h>

#include <csignal>

#ifdef __SANITIZE_THREAD__
// What the libraries do among themselves can't be seen by the sanitizer, and is not ours.
extern "C" const char *__tsan_default_options()
{
    return "die_after_fork=0:ignore_noninstrumented_modules=1";
}
#endif

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
