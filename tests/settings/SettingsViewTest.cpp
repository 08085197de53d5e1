#include "settings/SettingsView.h"

#include "hooks/InstallerFixture.h"
#include "settings/MarkedLines.h"

#include <QApplication>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace tirlo {

namespace {

/// The settings on show, in a home of their own, under real clicks.
struct SettingsViewTest : InstallerFixture
{
    void open()
    {
        view = std::make_unique<SettingsView>(installers, paths);
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

    /// Presses the button and expects these words in the status line.
    void expectAfter(const QString &title, const QString &name, const QString &status) const
    {
        click(title, name);
        EXPECT_TRUE(shows(status)) << status.toStdString();
    }

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
    expectAfter(claude, u"Install hooks"_s, review);
    const QString reviewed = preview(claude);
    EXPECT_TRUE(reviewed.contains(uR"("model": "x")"_s));
    click(claude, u"Cancel"_s);
    EXPECT_EQ(preview(claude), QString());
    EXPECT_EQ(bytesOf(path), "{\"model\":\"x\"}");

    click(claude, u"Install hooks"_s);
    expectAfter(claude, u"Confirm & write"_s, u"✓ Hooks installed in ~/.claude/settings.json"_s);
    EXPECT_EQ(bytesOf(path), reviewed.toUtf8());
    EXPECT_EQ(preview(claude), QString());
    click(claude, u"Install hooks"_s);
    expectAfter(claude, u"Uninstall"_s, u"✓ Hooks removed."_s);
    EXPECT_FALSE(bytesOf(path).contains("qv-hook"));
    EXPECT_EQ(preview(claude), QString()) << "a confirmation would put them back";

    // A folder in the file's place, after the review and before it.
    click(claude, u"Install hooks"_s);
    QFile::remove(path);
    QDir().mkpath(path);
    const QString refusal
        = u"❌ Write error: ~/.claude/settings.json cannot be read — Tirlo has not touched it."_s;
    expectAfter(claude, u"Confirm & write"_s, refusal);
    EXPECT_NE(preview(claude), QString());
    expectAfter(claude, u"Install hooks"_s, refusal);
    EXPECT_EQ(preview(claude), QString());
}

TEST_F(SettingsViewTest, AnOutdatedInstallationOffersAnUpdateInstead)
{
    const QString warning = u"Hook timeout outdated — update to fix approvals"_s;
    put(paths.claudeSettingsPath(),
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"command":"Skerry","timeout":60}]}]}})");
    open();
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    EXPECT_TRUE(shows(warning));
    EXPECT_FALSE(button(claude, u"Install hooks"_s));
    EXPECT_FALSE(button(claude, u"Uninstall"_s));
    click(claude, u"Update hooks"_s);
    click(claude, u"Cancel"_s);
    EXPECT_EQ(QApplication::focusWidget(), button(claude, u"Update hooks"_s));
    click(claude, u"Update hooks"_s);
    click(claude, u"Confirm & write"_s);
    EXPECT_FALSE(shows(warning));
    ASSERT_TRUE(button(claude, u"Install hooks"_s));
    EXPECT_TRUE(button(claude, u"Install hooks"_s)->hasFocus()) << "the other button is gone";
}

TEST_F(SettingsViewTest, TheOtherAgentsPreviewTheirRemovalToo)
{
    struct Row
    {
        QString name;
        QString path;
        QString label;
        QString hint = u"Hooks installed — restart %1 to activate"_s.arg(name);
        QString installed = u"✓ %1 hooks installed in %2"_s.arg(name, label);
    };
    const Row rows[]{
        {u"Gemini CLI"_s, paths.geminiSettingsPath(), u"~/.gemini/settings.json"_s},
        {u"Antigravity"_s, paths.antigravityHooksPath(), u"~/.gemini/config/hooks.json"_s},
        {u"Codex"_s, paths.codexHooksPath(), u"~/.codex/hooks.json"_s,
         u"Hooks installed — open Codex and run /hooks or open Hooks in the app's settings to trust them"_s,
         u"✓ Codex hooks installed — run /hooks in Codex or open Hooks in the app's settings to trust them."_s},
    };
    for (const Row &row : rows) {
        open();
        const QString title = row.name + u" Hooks"_s;
        EXPECT_TRUE(shows(row.label));
        expectAfter(title, u"Uninstall"_s, u"No %1 hooks to remove."_s.arg(row.name));
        EXPECT_EQ(preview(title), QString());
        expectAfter(title, u"Install hooks"_s, review);
        expectAfter(title, u"Confirm & write"_s, row.installed);
        EXPECT_TRUE(shows(row.hint));

        queue.advance(1);
        click(title, u"Uninstall"_s);
        EXPECT_EQ(preview(title), u"{}"_s);
        put(row.path, bytesOf(row.path) + ' ');
        expectAfter(
            title, u"Confirm & write"_s,
            u"❌ Write error: %1 changed since preview. Refresh and try again."_s.arg(row.label));
        EXPECT_EQ(preview(title), u"{}"_s) << "a failure leaves the preview open";
        click(title, u"Uninstall"_s);
        expectAfter(title, u"Confirm & write"_s, u"✓ %1 hooks removed."_s.arg(row.name));
        EXPECT_TRUE(shows(row.label));

        put(row.path, "{");
        expectAfter(title, u"Install hooks"_s,
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
    // The cursor stands on the first marked line, which is washed beyond its text.
    const QImage seen = boxes[0]->viewport()->grab().toImage();
    const int washed = boxes[0]->cursorRect().center().y();
    const int above = washed - boxes[0]->cursorRect().height();
    EXPECT_NE(seen.pixel(seen.width() - 1, washed), seen.pixel(seen.width() - 1, above));
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
        EXPECT_FALSE(each->accessibleName().isEmpty() || each->accessibleDescription().isEmpty());
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
