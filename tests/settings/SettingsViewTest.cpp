#include "settings/SettingsView.h"

#include "core/Paths.h"
#include "hooks/installers/HookInstallers.h"
#include "settings/MarkedLines.h"
#include "support/ManualQueue.h"

#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace tirlo {

using namespace Qt::StringLiterals;

namespace {

/// The settings on show, in a home of their own, under real clicks.
struct SettingsViewTest : testing::Test
{
    void open()
    {
        view = std::make_unique<SettingsView>(hooks, paths);
        view->resize(480, 720);
        view->show();
    }

    QGroupBox *section(const QString &title) const
    {
        for (QGroupBox *box : view->findChildren<QGroupBox *>()) {
            if (box->title() == title)
                return box;
        }
        return nullptr;
    }

    /// The button on show in that section; null when there is none.
    QPushButton *button(const QString &title, const QString &name) const
    {
        for (QPushButton *each : section(title)->findChildren<QPushButton *>()) {
            if (each->accessibleName() == name && each->isVisible())
                return each;
        }
        return nullptr;
    }

    void click(const QString &title, const QString &name) const
    {
        ASSERT_TRUE(button(title, name)) << name.toStdString();
        QTest::mouseClick(button(title, name), Qt::LeftButton);
    }

    /// The text under review in that section; "" when nothing is.
    QString preview(const QString &title) const
    {
        const auto *box = section(title)->findChild<MarkedLines *>();
        return box->isVisible() ? box->toPlainText() : QString();
    }

    bool shows(const QString &text) const
    {
        for (const QLabel *label : view->findChildren<QLabel *>()) {
            if (label->text() == text && label->isVisible())
                return true;
        }
        return false;
    }

    std::string status() const { return view->statusMessage().toStdString(); }

    static void put(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(path.section(u'/', 0, -2));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QByteArray bytesOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QTemporaryDir home;
    Paths paths{home.path()};
    ManualQueue queue;
    HookInstallers hooks{paths, queue};
    std::unique_ptr<SettingsView> view;

    const QString claude = u"Claude Code Hooks"_s;
    const QString review = u"Review the JSON below before confirming."_s;
};

TEST_F(SettingsViewTest, ClaudeCodeIsWiredAfterAReviewAndUnwired)
{
    const QString path = paths.claudeSettingsPath();
    put(path, "{\"model\":\"x\"}");
    open();
    EXPECT_TRUE(shows(u"qv-hook : "_s + paths.hookScriptPath()));
    EXPECT_EQ(status(), "");
    click(claude, u"Install hooks"_s);
    EXPECT_EQ(status(), review.toStdString());
    EXPECT_TRUE(preview(claude).contains(uR"("model": "x")"_s));
    EXPECT_EQ(section(claude)->findChild<MarkedLines *>()->height(), 140);
    EXPECT_EQ(bytesOf(path), "{\"model\":\"x\"}");

    click(claude, u"Cancel"_s);
    EXPECT_EQ(preview(claude), QString());
    EXPECT_EQ(bytesOf(path), "{\"model\":\"x\"}");

    click(claude, u"Install hooks"_s);
    const QString reviewed = preview(claude);
    click(claude, u"Confirm & write"_s);
    EXPECT_EQ(status(), "✓ Hooks installed in ~/.claude/settings.json");
    EXPECT_EQ(bytesOf(path), reviewed.toUtf8());
    EXPECT_EQ(preview(claude), QString());
    click(claude, u"Uninstall"_s);
    EXPECT_EQ(status(), "✓ Hooks removed.");
    EXPECT_FALSE(bytesOf(path).contains("qv-hook"));

    // A folder in the file's place.
    QFile::remove(path);
    QDir().mkpath(path);
    click(claude, u"Install hooks"_s);
    click(claude, u"Confirm & write"_s);
    EXPECT_TRUE(view->statusMessage().startsWith(u"❌ Write error: "_s)) << status();
    EXPECT_NE(preview(claude), QString());
}

TEST_F(SettingsViewTest, AnOutdatedInstallationOffersAnUpdateInstead)
{
    put(paths.claudeSettingsPath(),
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"command":"Skerry","timeout":60}]}]}})");
    open();
    EXPECT_TRUE(shows(u"Hook timeout outdated — update to fix approvals"_s));
    EXPECT_FALSE(button(claude, u"Install hooks"_s));
    EXPECT_FALSE(button(claude, u"Uninstall"_s));
    click(claude, u"Update hooks"_s);
    click(claude, u"Confirm & write"_s);
    EXPECT_FALSE(shows(u"Hook timeout outdated — update to fix approvals"_s));
    EXPECT_TRUE(button(claude, u"Install hooks"_s));
}

TEST_F(SettingsViewTest, TheOtherAgentsPreviewTheirRemovalToo)
{
    struct Row
    {
        QString name;
        QString path;
        QString label;
        QString installedLine;
        QString installed;
    };
    const QString gemini = u"~/.gemini/settings.json"_s;
    const QString antigravity = u"~/.gemini/config/hooks.json"_s;
    const Row rows[]{
        {u"Gemini CLI"_s, paths.geminiSettingsPath(), gemini,
         u"Hooks installed — restart Gemini CLI to activate"_s,
         u"✓ Gemini CLI hooks installed in "_s + gemini},
        {u"Antigravity"_s, paths.antigravityHooksPath(), antigravity,
         u"Hooks installed — restart Antigravity to activate"_s,
         u"✓ Antigravity hooks installed in "_s + antigravity},
        {u"Codex"_s, paths.codexHooksPath(), u"~/.codex/hooks.json"_s,
         u"Hooks installed — open Codex and run /hooks or open Hooks in the app's settings to trust them"_s,
         u"✓ Codex hooks installed — run /hooks in Codex or open Hooks in the app's settings to trust them."_s},
    };
    for (const Row &row : rows) {
        open();
        const QString title = row.name + u" Hooks"_s;
        EXPECT_TRUE(shows(row.label));
        click(title, u"Uninstall"_s);
        EXPECT_EQ(view->statusMessage(), u"No %1 hooks to remove."_s.arg(row.name));
        EXPECT_EQ(preview(title), QString());

        click(title, u"Install hooks"_s);
        EXPECT_EQ(view->statusMessage(), review);
        click(title, u"Confirm & write"_s);
        EXPECT_EQ(view->statusMessage(), row.installed);
        EXPECT_TRUE(shows(row.installedLine));

        queue.advance(1);
        click(title, u"Uninstall"_s);
        EXPECT_EQ(preview(title), u"{}"_s);
        EXPECT_TRUE(bytesOf(row.path).contains("qv-hook"));
        click(title, u"Cancel"_s);
        EXPECT_TRUE(bytesOf(row.path).contains("qv-hook"));
        click(title, u"Uninstall"_s);
        put(row.path, bytesOf(row.path) + ' ');
        click(title, u"Confirm & write"_s);
        EXPECT_EQ(
            view->statusMessage(),
            u"❌ Write error: %1 changed since preview. Refresh and try again."_s.arg(row.label));
        EXPECT_EQ(preview(title), u"{}"_s) << "a failure leaves the preview open";
        click(title, u"Uninstall"_s);
        click(title, u"Confirm & write"_s);
        EXPECT_EQ(view->statusMessage(), u"✓ %1 hooks removed."_s.arg(row.name));
        EXPECT_TRUE(shows(row.label));

        put(row.path, "{");
        click(title, u"Install hooks"_s);
        EXPECT_EQ(view->statusMessage(),
                  u"❌ %1 is not valid JSON — Tirlo has not touched it."_s.arg(row.label));
        EXPECT_EQ(preview(title), QString());
    }
}

TEST_F(SettingsViewTest, ThePreviewMarksTheChangesAndListsWhatGoes)
{
    put(paths.codexHooksPath(),
        R"({"other":[1,2],"hooks":{"Stop":[{"hooks":[{"command":"old/qv-hook"}]}]}})");
    open();
    const QString title = u"Codex Hooks"_s;
    click(title, u"Install hooks"_s);
    const auto boxes = section(title)->findChildren<MarkedLines *>();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[0]->accessibleName(), u"New content of ~/.codex/hooks.json"_s);
    EXPECT_EQ(boxes[1]->accessibleName(), u"Removed lines"_s);
    EXPECT_EQ(boxes[1]->toPlainText().trimmed(), u"\"command\": \"old/qv-hook\""_s);
    const auto washes = boxes[0]->extraSelections();
    const int lines = boxes[0]->document()->blockCount();
    EXPECT_GT(washes.size(), lines / 2);
    for (const auto &wash : washes) {
        const QString line = wash.cursor.block().text();
        EXPECT_FALSE(line.contains(u"other"_s) || line.trimmed() == u"1,"_s) << line.toStdString();
    }
}

TEST_F(SettingsViewTest, TheKeyboardReachesAndWorksEverything)
{
    open();
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    const auto focused = [&] { return QApplication::focusWidget(); };
    button(claude, u"Install hooks"_s)->setFocus();
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(focused(), section(claude)->findChild<MarkedLines *>()) << "it is to be read first";
    QTest::keyClick(focused(), Qt::Key_Tab);
    EXPECT_EQ(focused(), button(claude, u"Confirm & write"_s));
    QTest::keyClick(focused(), Qt::Key_Tab);
    EXPECT_EQ(focused(), button(claude, u"Cancel"_s));
    QTest::keyClick(focused(), Qt::Key_Space);
    EXPECT_EQ(focused(), button(claude, u"Install hooks"_s)) << "the keyboard is not lost";

    for (const QPushButton *each : view->findChildren<QPushButton *>())
        EXPECT_FALSE(each->accessibleName().isEmpty());
    for (const char *title : {"Claude Code", "Gemini CLI", "Antigravity", "Codex"}) {
        for (const char *name : {"Install hooks", "Uninstall"}) {
            EXPECT_EQ(focused(),
                      button(QString::fromLatin1(title) + u" Hooks"_s, QString::fromLatin1(name)));
            QTest::keyClick(focused(), Qt::Key_Tab);
        }
    }
}

} // namespace
} // namespace tirlo
