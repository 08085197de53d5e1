#include "kit/Desktop.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    if (!tirlo::e2e::isVirtualDesktop()) {
        std::fputs("These tests move the pointer: run them through tools/stage.\n", stderr);
        return 1;
    }
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
