#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char *argv[])
{
    using tirlo::x11test::OtherApplication;
    if (OtherApplication::isWanted(argc, argv))
        return OtherApplication::run(argc, argv);

    testing::InitGoogleTest(&argc, argv);
    if (!tirlo::e2e::isVirtualDesktop()) {
        std::fputs("These tests move the pointer: run them through tools/stage.\n", stderr);
        return 1;
    }
    // Before anything asks for desktop entries, so that the tests' own are the only ones.
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    qputenv("XDG_DATA_DIRS", data.path().toUtf8());

    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Tirlo"));
    OtherApplication::install(QStringLiteral("code"), QStringLiteral("Code"),
                              QStringLiteral("Editor of Code"));
    return RUN_ALL_TESTS();
}
