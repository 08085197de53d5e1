#include "settings/SettingsView.h"

#include "hooks/InstallerFixture.h"
#include "ui/MarkedLines.h"

#include <QApplication>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <algorithm>

namespace tirlo {

namespace {

/// The settings on show, in a home of their own, under real clicks in one of the sections.
struct SettingsViewTest : InstallerFixture
{
    void open(const QString &title)
    {
        view = std::make_unique<SettingsView>(installers, paths);
        view->resize(480, 720);
        view->show();
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
        goTo(title);
    }

    void goTo(const QString &title)
    {
        const auto boxes = view->findChildren<QGroupBox *>();
        const auto found = std::ranges::find(boxes, title + u" Hooks"_s, &QGroupBox::title);
        ASSERT_NE(found, boxes.end()) << title.toStdString();
        section = *found;
    }

    /// The button on show in the section; null when there is none.
    QPushButton *button(const QString &name) const
    {
        for (QPushButton *each : section->findChildren<QPushButton *>()) {
            if (each->accessibleName() == name && each->isVisible())
                return each;
        }
        return nullptr;
    }

    /// Presses the button and expects these words in the status line, if any.
    void click(const QString &name, const QString &status = {}) const
    {
        ASSERT_TRUE(button(name)) << name.toStdString();
        QTest::mouseClick(button(name), Qt::LeftButton);
        EXPECT_TRUE(status.isEmpty() || shows(status)) << status.toStdString();
    }

    /// The text under review in the section; "" when nothing is.
    QString preview() const
    {
        const auto *box = section->findChild<MarkedLines *>();
        return box->isVisible() ? box->toPlainText() : QString();
    }

    bool shows(const QString &text) const
    {
        return std::ranges::any_of(view->findChildren<QLabel *>(), [&](const QLabel *label) {
            return label->text() == text && label->isVisible();
        });
    }

    std::unique_ptr<SettingsView> view;
    QGroupBox *section = nullptr;

    const QString install = u"Install hooks"_s;
    const QString uninstall = u"Uninstall"_s;
    const QString confirm = u"Confirm & write"_s;
    const QString review = u"Review the JSON below before confirming."_s;
};

TEST_F(SettingsViewTest, ClaudeCodeIsWiredAfterAReviewAndUnwired)
{
    writeFile(claudePath, "{\"model\":\"x\"}");
    open(u"Claude Code"_s);
    EXPECT_TRUE(shows(u"qv-hook : "_s + paths.hookScriptPath()));
    click(install, review);
    const QString reviewed = preview();
    EXPECT_TRUE(reviewed.contains(uR"("model": "x")"_s));
    click(u"Cancel"_s);
    EXPECT_EQ(preview(), QString());
    EXPECT_EQ(contents(claudePath), "{\"model\":\"x\"}");

    click(install);
    click(confirm, u"✓ Hooks installed in ~/.claude/settings.json"_s);
    EXPECT_EQ(contents(claudePath), reviewed.toUtf8());
    EXPECT_EQ(preview(), QString());
    click(install);
    click(uninstall, u"✓ Hooks removed."_s);
    EXPECT_FALSE(contents(claudePath).contains("qv-hook"));
    EXPECT_EQ(preview(), QString()) << "a confirmation would put them back";

    // A folder in the file's place, after the review and before it.
    click(install);
    QFile::remove(claudePath);
    QDir().mkpath(claudePath);
    const QString refusal
        = u"❌ Write error: ~/.claude/settings.json cannot be read — Tirlo has not touched it."_s;
    click(confirm, refusal);
    EXPECT_NE(preview(), QString());
    click(install, refusal);
    EXPECT_EQ(preview(), QString());
}

TEST_F(SettingsViewTest, AnOutdatedInstallationOffersAnUpdateInstead)
{
    const QString warning = u"Hook timeout outdated — update to fix approvals"_s;
    const QString update = u"Update hooks"_s;
    writeFile(claudePath,
              R"({"hooks":{"PermissionRequest":[{"hooks":[{"command":"Skerry","timeout":60}]}]}})");
    open(u"Claude Code"_s);
    EXPECT_TRUE(shows(warning));
    EXPECT_FALSE(button(install) || button(uninstall));
    click(update);
    click(u"Cancel"_s);
    EXPECT_EQ(QApplication::focusWidget(), button(update));
    click(update);
    click(confirm);
    EXPECT_FALSE(shows(warning));
    ASSERT_TRUE(button(install));
    EXPECT_TRUE(button(install)->hasFocus()) << "the other button is gone";
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
        {u"Gemini CLI"_s, geminiPath, u"~/.gemini/settings.json"_s},
        {u"Antigravity"_s, antigravityPath, u"~/.gemini/config/hooks.json"_s},
        {u"Codex"_s, codexPath, u"~/.codex/hooks.json"_s,
         u"Hooks installed — open Codex and run /hooks or open Hooks in the app's settings to trust them"_s,
         u"✓ Codex hooks installed — run /hooks in Codex or open Hooks in the app's settings to trust them."_s},
    };
    for (const auto &[name, path, label, hint, installed] : rows) {
        open(name);
        EXPECT_TRUE(shows(label));
        click(uninstall, u"No %1 hooks to remove."_s.arg(name));
        EXPECT_EQ(preview(), QString());
        click(install, review);
        click(confirm, installed);
        EXPECT_TRUE(shows(hint));

        queue.advance(1);
        click(uninstall);
        writeFile(path, contents(path) + ' ');
        click(confirm,
              u"❌ Write error: %1 changed since preview. Refresh and try again."_s.arg(label));
        EXPECT_EQ(preview(), u"{}"_s) << "a failure leaves the preview open";
        click(uninstall);
        click(confirm, u"✓ %1 hooks removed."_s.arg(name));
        EXPECT_TRUE(shows(label));

        writeFile(path, "{");
        click(install, u"❌ %1 is not valid JSON — Tirlo has not touched it."_s.arg(label));
        EXPECT_EQ(preview(), QString());
    }
}

TEST_F(SettingsViewTest, ThePreviewMarksTheChangesAndListsWhatGoes)
{
    writeFile(codexPath,
              R"({"other":[1,2],"hooks":{"Stop":[{"hooks":[{"command":"old/qv-hook"}]}]}})");
    open(u"Codex"_s);
    click(install);
    const auto boxes = section->findChildren<MarkedLines *>();
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
    open(u"Claude Code"_s);
    const auto focused = [] { return QApplication::focusWidget(); };
    button(install)->setFocus();
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(focused(), section->findChild<MarkedLines *>()) << "it is to be read first";
    for (const QString &name : {confirm, u"Cancel"_s}) {
        QTest::keyClick(focused(), Qt::Key_Tab);
        EXPECT_EQ(focused(), button(name));
    }
    QTest::keyClick(focused(), Qt::Key_Space);
    EXPECT_EQ(focused(), button(install)) << "the keyboard is not lost";

    for (const QPushButton *each : view->findChildren<QPushButton *>())
        EXPECT_FALSE(each->accessibleName().isEmpty() || each->accessibleDescription().isEmpty());
    for (const char *title : {"Claude Code", "Gemini CLI", "Antigravity", "Codex"}) {
        goTo(QString::fromLatin1(title));
        for (const QString &name : {install, uninstall}) {
            EXPECT_EQ(focused(), button(name)) << title;
            QTest::keyClick(focused(), Qt::Key_Tab);
        }
    }
}

} // namespace
} // namespace tirlo
