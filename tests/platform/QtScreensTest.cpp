#include "platform/linux/QtScreens.h"
#include "platform/linux/DisplayNotch.h"
#include "support/Files.h"
#include "support/ManualQueue.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <tuple>

using namespace tirlo;

namespace {

TEST(QtScreensTest, ANotchCountsOnlyWhileTheDriverShowsItWithinBoundsAndOnTheBuiltInScreen)
{
    const QTemporaryDir root;
    const QByteArray usual("\0\0\0\x4a", 4);
    const std::tuple<QByteArray, QByteArray, int> rows[]{{"", usual, 0},
                                                         {"N\n", usual, 0},
                                                         {"Y\n", "", 0},
                                                         {"Y\n", "abc", 0},
                                                         {"Y\n", "\xff\xff\xff\xff", 160},
                                                         {"Y\n", usual, 74}};
    EXPECT_EQ(shownNotchHeight(root.path()), 0) << "another kind of machine";
    for (const auto &[parameter, height, shown] : rows) {
        writeFile(root.path() + "/sys/module/appledrm/parameters/show_notch", parameter);
        writeFile(root.path() + "/proc/device-tree/soc@200000000/dcp@38bc00000/apple,notch-height",
                  height);
        EXPECT_EQ(shownNotchHeight(root.path()), shown);
    }

    ManualQueue queue;
    const XcbStack stack(queue);
    const QtScreens screens(stack, queue, root.path());
    ASSERT_TRUE(screens.main());
    EXPECT_EQ(screens.main()->safeAreaTop, 0) << "this one is no laptop's panel";
    EXPECT_FALSE(screens.main()->frame.isEmpty());
    EXPECT_EQ(screens.all().front(), *screens.main());
}

} // namespace
