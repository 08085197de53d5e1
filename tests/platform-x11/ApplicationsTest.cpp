#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/XcbWindowList.h"
#include "support/Files.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QWidget>

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::OtherApplication;

namespace {

/// Installs a browser of the user's choice that writes the addresses that it is given to the file.
void installBrowser(const QString &folder, const QString &file)
{
    const QString program = folder + "/browser";
    writeFile(program, QString("#!/bin/sh\nprintf '%s' \"$*\" > '%1'\n").arg(file).toUtf8());
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString entries = qEnvironmentVariable("XDG_DATA_HOME") + "/applications/";
    writeFile(entries + "browser.desktop",
              "[Desktop Entry]\nType=Application\nName=Browser\nExec=" + program.toUtf8()
                  + " %u\nMimeType=x-scheme-handler/https;\n");
    writeFile(entries + "mimeapps.list",
              "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
}

TEST(WindowListTest, EachChangeOfTheActiveApplicationIsToldOnce)
{
    QtMainQueue queue;
    const XcbStack stack(queue);
    XcbWindowList windows(stack);
    std::vector<RunningApplication> seen;
    QObject::connect(&windows, &WindowList::applicationActivated,
                     [&](const RunningApplication &application) { seen.push_back(application); });
    const auto waitForCount = [&](std::size_t count) {
        waitUntil([&] { return seen.size() >= count; });
        waitUntil([] { return false; }, 100);
        return seen.size() == count;
    };

    const OtherApplication editor("Code", QRect(100, 100, 300, 300));
    ASSERT_TRUE(waitForCount(1));
    const OtherApplication unknown("Lighthouse", QRect(600, 100, 300, 300));
    ASSERT_TRUE(waitForCount(2));
    clickAt(250, 250);
    ASSERT_TRUE(waitForCount(3));
    clickAt(260, 260);

    QWidget ours;
    ours.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ours));
    ASSERT_TRUE(waitForCount(4));

    const RunningApplication expected{editor.processId(), "com.microsoft.VSCode", "Editor of Code"};
    EXPECT_EQ(seen,
              (std::vector{expected,
                           {unknown.processId(), "", "Lighthouse"},
                           expected,
                           {getpid(), ownBundleIdentifier, "Tirlo"}}));
}

TEST(ApplicationsTest, RunningOnesAreListedFrontFirstAndCanBeBroughtThere)
{
    DesktopApplications applications;
    const OtherApplication terminal("kitty", QRect(100, 100, 300, 300));
    const OtherApplication other("Lighthouse", QRect(150, 150, 300, 300));

    const auto before = applications.running();
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(before[1],
              (RunningApplication{terminal.processId(), "net.kovidgoyal.kitty", "kitty"}));

    EXPECT_TRUE(applications.activate(before[1]));
    EXPECT_TRUE(waitUntil([&] { return terminal.isActive(); }));
    EXPECT_EQ(applications.running()[0], before[1]) << "it is active but not in front";
    EXPECT_FALSE(applications.activate({1, "com.openai.codex", "Codex"}));
    EXPECT_TRUE(terminal.isActive());
}

TEST(ApplicationsTest, OpeningStartsAProgramOnItsOwnAndLaterShowsIt)
{
    DesktopApplications applications;
    EXPECT_FALSE(applications.open("com.openai.codex")) << "it isn't installed";
    EXPECT_FALSE(applications.open("com.example.nobody"));
    ASSERT_TRUE(waitUntil([&] { return applications.running().empty(); }));

    // What a careless parent leaves behind.
    sigset_t blocked;
    sigset_t previous;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigprocmask(SIG_BLOCK, &blocked, &previous);
    const auto oldHandler = std::signal(SIGPIPE, SIG_IGN);
    const int descriptor = open("/dev/zero", O_RDONLY);

    EXPECT_TRUE(applications.open("com.microsoft.VSCode"));
    close(descriptor);
    std::signal(SIGPIPE, oldHandler);
    sigprocmask(SIG_SETMASK, &previous, nullptr);

    ASSERT_TRUE(waitUntil([&] { return applications.running().size() == 1; }));
    const RunningApplication editor = applications.running()[0];
    EXPECT_EQ(editor.bundleIdentifier, "com.microsoft.VSCode");

    const QString process = QString("/proc/%1").arg(editor.processId);
    const QString status = contents(process + "/status");
    for (const char *set : {"SigBlk", "SigIgn"})
        EXPECT_TRUE(status.contains(set + QString(":\t0000000000000000"))) << status.toStdString();
    EXPECT_NE(getsid(pid_t(editor.processId)), getsid(0));
    EXPECT_EQ(QFileInfo(process + "/fd/1").symLinkTarget(), "/dev/null");
    for (int i = 0; i < 64; ++i)
        EXPECT_NE(QFileInfo(process + QString("/fd/%1").arg(i)).symLinkTarget(), "/dev/zero");

    const OtherApplication other("Lighthouse", QRect(0, 0, 400, 400));
    EXPECT_TRUE(applications.open("com.microsoft.VSCode"));
    EXPECT_TRUE(waitUntil([&] { return OtherApplication::activeProcess() == editor.processId; }));
    EXPECT_EQ(applications.running().size(), 2U) << "a second one was started";
    kill(pid_t(editor.processId), SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return !QFileInfo::exists(process); })) << "it stays as a zombie";
}

TEST(ApplicationsTest, WebPagesOpenInTheUsersBrowserAndNothingElseDoes)
{
    DesktopApplications applications;
    const QTemporaryDir folder;
    const QString file = folder.filePath("pages");
    EXPECT_FALSE(applications.openUrl(QUrl("https://example.org"))) << "there is no browser";

    installBrowser(folder.path(), file);
    const QUrl page("https://example.org/a%20b?x=$(id)&y='1'");
    EXPECT_TRUE(waitUntil([&] { return applications.openUrl(page); }));
    EXPECT_TRUE(waitUntil([&] { return contents(file) == QString(page.toEncoded()); }))
        << contents(file).toStdString();
    for (const char *other : {"file:///etc/passwd", "mailto:a@example.org", "http://example.org"})
        EXPECT_FALSE(applications.openUrl(QUrl(other))) << other;
}

} // namespace
