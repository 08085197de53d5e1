#include "AfterGreeting.h"

#include "kit/ScreenReader.h"

#include <QLineEdit>
#include <QTest>

using namespace tirlo::e2e;

namespace {

void press(const QString &keys)
{
    QProcess::execute("xdotool", QStringList{"key"} + keys.split(' '));
}

/// The program with its hotkey on, which is Shift and Super and N, and an editor that has the
/// keyboard.
class KeysTest : public AfterGreeting
{
protected:
    void SetUp() override
    {
        AfterGreeting::SetUp();
        ASSERT_TRUE(program.stop());
        QFile settings(program.supportFolder() + "/settings.json");
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write(R"({"hotkeyEnabled": true})");
        settings.close();
        ASSERT_TRUE(program.start());
        ASSERT_TRUE(waitForWidth(openWidth));
        ASSERT_TRUE(waitForWidth(compactWidth, 15000));
        text.setGeometry(200, 400, 400, 40);
        text.show();
        text.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&text));
    }

    QLineEdit text;
};

TEST_F(KeysTest, ARequestIsHeardReachedAndAnsweredWithoutMouseOrEyes)
{
    ScreenReader reader(program.processId());
    const auto request = editor.askFor("Bash", {{"command", "make"}});
    ASSERT_TRUE(reader.waitFor(
        "notification Claude Code, lighthouse, needs permission: Run a command. make"));
    press("a");
    press("Return");
    rest(1000);
    press("shift+super+n");
    EXPECT_TRUE(waitUntil([&] { return !text.isActiveWindow(); }));
    EXPECT_EQ(text.text(), "a") << "the hotkey's letter has reached the editor";
    press("Return space");
    rest(300);
    EXPECT_TRUE(request->isRunning()) << "no key answers what the user has not moved to";

    press("Tab");
    EXPECT_TRUE(reader.waitFor("Request text"));
    press("Tab");
    EXPECT_TRUE(reader.waitFor("Deny push button"));
    press("Right");
    EXPECT_TRUE(reader.waitFor("Say why… text"));
    press("Down");
    EXPECT_TRUE(reader.waitFor("Allow push button"));
    press("Tab");
    EXPECT_TRUE(reader.waitFor("Home page tab"));
    press("shift+Tab");
    EXPECT_TRUE(reader.waitFor("Allow push button"));
    press("Return");
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_TRUE(request->output().contains("allow"));
    press("Escape");
    EXPECT_TRUE(waitUntil([&] { return text.isActiveWindow(); }));
    press("b");
    EXPECT_TRUE(waitUntil([&] { return text.text() == "ab"; }));
}

} // namespace
