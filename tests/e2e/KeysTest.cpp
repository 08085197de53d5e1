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

using KeysTest = AfterGreeting;

TEST_F(KeysTest, ARequestIsHeardReachedAndAnsweredWithoutMouseOrEyes)
{
    ASSERT_TRUE(program.stop());
    QFile settings(program.supportFolder() + "/settings.json");
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(R"({"hotkeyEnabled": true})");
    settings.close();
    ASSERT_TRUE(program.start());
    QLineEdit text;
    text.setGeometry(200, 400, 400, 40);
    text.show();
    text.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&text));

    ScreenReader reader(program.processId());
    const auto request = editor.askFor("Bash", {{"command", "make"}});
    ASSERT_TRUE(reader.says("Claude Code, lighthouse, needs permission: Run a command. make, "
                            "notification"));
    ASSERT_TRUE(waitForWidth(openWidth));
    rest(1000);
    press("a Return shift+super+n");
    ASSERT_TRUE(reader.says("Tirlo, frame"));
    EXPECT_EQ(text.text(), "a") << "the hotkey's letter is no one else's";
    press("Return space");
    for (const auto &[key, said] : {std::pair("Tab", "Request, text"),
                                    {"Tab", "Deny, push button"},
                                    {"Right", "Say why…, text"},
                                    {"Down", "Allow, push button"},
                                    {"Tab", "Home, page tab"},
                                    {"shift+Tab", "Allow, push button"}}) {
        press(key);
        EXPECT_TRUE(reader.says(said)) << said;
    }
    EXPECT_TRUE(request->isRunning()) << "no key answers what the user has not moved to";
    press("Return");
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_TRUE(request->output().contains("allow"));
    press("Escape");
    EXPECT_TRUE(waitUntil([&] { return text.isActiveWindow(); }));
    press("b");
    EXPECT_TRUE(waitUntil([&] { return text.text() == "ab"; }));
}

} // namespace
