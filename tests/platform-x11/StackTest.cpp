#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/XcbLocker.h"
#include "platform/linux/XcbPanelWindow.h"
#include "platform/linux/XcbWindowList.h"

#include <QLineEdit>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::OtherApplication;

namespace {

const QRect wholeScreen(0, 0, 1280, 800);

/// What lies over what on the stage, with a window that stands for the island's.
class StackTest : public testing::Test
{
protected:
    StackTest()
    {
        panel.setGeometry(280, 0, 720, 320);
        panel.show();
        waitUntil([this] { return panel.windowHandle()->isExposed(); });
    }

    [[nodiscard]] bool isFull() const { return windows.isFullScreen(wholeScreen); }

    [[nodiscard]] bool isCovered(PanelWindow::Cover cover) const
    {
        return panelWindow.isCovered(*panel.windowHandle(), QRectF(240, 0, 240, 24), cover);
    }

    QtMainQueue queue;
    const XcbStack stack{queue};
    const XcbWindowList windows{stack};
    XcbPanelWindow panelWindow{stack};
    QWidget panel{nullptr, Qt::FramelessWindowHint | Qt::BypassWindowManagerHint};
};

TEST_F(StackTest, FullScreenIsWhatIsSeenAtTheTopOfTheScreen)
{
    EXPECT_FALSE(isFull());
    const OtherApplication plain("Plain", QRect(100, 50, 900, 300));
    EXPECT_FALSE(isFull());
    {
        const OtherApplication film("Film", wholeScreen, OtherApplication::Kind::fullScreen);
        EXPECT_TRUE(waitUntil([&] { return isFull(); }));
        EXPECT_FALSE(windows.isFullScreen(QRectF(0, 0, 800, 600))) << "there is no such screen";
        const OtherApplication menu("Menu", QRect(600, 0, 100, 100),
                                    OtherApplication::Kind::unmanaged);
        rest(500);
        EXPECT_TRUE(isFull()) << "a menu lies over it";
        const OtherApplication above("Above", QRect(500, 10, 400, 300));
        EXPECT_TRUE(waitUntil([&] { return !isFull(); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !isFull(); }));
    const OtherApplication curtain("Game", wholeScreen, OtherApplication::Kind::unmanaged);
    EXPECT_TRUE(waitUntil([&] { return isFull(); }));
}

TEST_F(StackTest, WhatLiesOverThePanelIsKnownUntilItIsRaised)
{
    EXPECT_FALSE(isCovered(PanelWindow::Cover::anything));
    const OtherApplication other("Other", QRect(400, 0, 400, 200),
                                 OtherApplication::Kind::unmanaged);
    EXPECT_TRUE(waitUntil([&] { return isCovered(PanelWindow::Cover::anything); }));
    EXPECT_FALSE(isCovered(PanelWindow::Cover::windows)) << "nobody looks after it";
    panelWindow.raise(*panel.windowHandle());
    EXPECT_TRUE(waitUntil([&] { return !isCovered(PanelWindow::Cover::anything); }));
}

TEST_F(StackTest, TheKeyboardComesAtOnceAndGoesBackToWhoHadIt)
{
    QLineEdit field(&panel);
    field.show();
    field.setFocus();
    auto other = std::make_unique<OtherApplication>("Editor", QRect(300, 400, 300, 300));
    // A window that has just become active may ask for the keyboard once more by itself.
    rest(300);
    QWindow &native = *panel.windowHandle();
    panelWindow.takeKeyboard(native);
    QProcess::execute("xdotool", {"type", "--delay", "1", "letters"});
    EXPECT_TRUE(waitUntil([&] { return field.text() == "letters"; })) << field.text().toStdString();
    EXPECT_TRUE(panelWindow.returnKeyboard(native));
    EXPECT_TRUE(waitUntil([&] { return !panel.isActiveWindow() && other->isActive(); }));

    panelWindow.takeKeyboard(native);
    EXPECT_TRUE(waitUntil([&] { return panel.isActiveWindow(); }));
    other.reset();
    static_cast<void>(panelWindow.returnKeyboard(native));
    EXPECT_TRUE(waitUntil([&] { return !panel.isActiveWindow(); })) << "whoever has gone";
}

TEST_F(StackTest, ACurtainThatTakesTheKeyboardLocksTheScreen)
{
    const XcbLocker locker(stack, queue);
    {
        const OtherApplication game("Game", wholeScreen, OtherApplication::Kind::unmanaged);
        rest(800);
        EXPECT_FALSE(locker.isLocked());
    }
    {
        const OtherApplication curtain("Locker", wholeScreen, OtherApplication::Kind::grabbing);
        EXPECT_TRUE(waitUntil([&] { return locker.isLocked(); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !locker.isLocked(); }));
}

TEST_F(StackTest, APanelAtTheTopIsMeasuredUnlessItCannotBeTrue)
{
    const QtScreens screens(stack, queue);
    const auto depth = [&screens] { return screens.main()->topPanel; };
    EXPECT_EQ(depth(), 0);
    {
        const OtherApplication bar("Bar", QRect(0, 0, 1280, 30), OtherApplication::Kind::panel);
        EXPECT_TRUE(waitUntil([&] { return depth() == 30; })) << depth();
    }
    EXPECT_TRUE(waitUntil([&] { return depth() == 0; }));
    const OtherApplication nonsense("Bar", QRect(0, 0, 1280, 5000), OtherApplication::Kind::panel);
    rest(800);
    EXPECT_EQ(depth(), 0);
}

} // namespace
