#include "IslandFixture.h"

#include <QLineEdit>
#include <QPushButton>

using namespace tirlo;

namespace {

/// The keyboard goes to the island for its text fields and back to where it was.
class KeyboardTest : public IslandFixture
{
protected:
    KeyboardTest()
    {
        auto *content = new QWidget;
        field = new QLineEdit(content);
        field->setGeometry(200, 100, 200, 24);
        button = new QPushButton(content);
        button->setGeometry(450, 100, 80, 24);
        button->setFocusPolicy(Qt::TabFocus);
        controller.setContent(content);
        show();
        leave();
        applications.alive = {editor};
        state.lastExternalApp = editor;
    }

    /// Gives another window the keyboard.
    void leave()
    {
        elsewhere.show();
        elsewhere.activateWindow();
        QCoreApplication::processEvents();
    }

    /// Presses the middle of the control.
    void press(const QWidget &control)
    {
        IslandPanel &panel = controller.panel();
        const QPoint local = control.mapTo(&panel, control.rect().center());
        point(panel.pos() + local);
        QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, Qt::NoModifier, local);
    }

    [[nodiscard]] bool acceptsKeyboard()
    {
        return !(controller.panel().windowHandle()->flags() & Qt::WindowDoesNotAcceptFocus);
    }

    [[nodiscard]] bool hasKeyboard()
    {
        QCoreApplication::processEvents();
        EXPECT_EQ(acceptsKeyboard(), controller.panel().isActiveWindow());
        return acceptsKeyboard();
    }

    QWidget elsewhere;
    const RunningApplication editor{1, QStringLiteral("com.microsoft.VSCode"), {}};
    QLineEdit *field = nullptr;
    QPushButton *button = nullptr;
};

TEST_F(KeyboardTest, APressOnATextFieldOfAnyCardTakesIt)
{
    Q_EMIT notifications.hookExpand(IslandView::note);
    EXPECT_FALSE(hasKeyboard());
    press(*button);
    EXPECT_FALSE(hasKeyboard()) << "a button needs none";
    field->setEnabled(false);
    press(*field);
    EXPECT_FALSE(hasKeyboard());
    field->setEnabled(true);
    press(*field);
    EXPECT_TRUE(hasKeyboard());
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(KeyboardTest, HoweverTheIslandClosesTheLastApplicationGetsItBack)
{
    Q_EMIT notifications.hookExpand(IslandView::overview);
    controller.collapse();
    EXPECT_TRUE(applications.activated.empty()) << "it never had the keyboard";

    Q_EMIT notifications.hookExpand(IslandView::prompt);
    ASSERT_TRUE(hasKeyboard());
    controller.collapse();
    EXPECT_FALSE(acceptsKeyboard());
    leave();
    EXPECT_EQ(applications.activated, std::vector{editor});
    Q_EMIT notifications.hookExpand(IslandView::prompt);
    EXPECT_TRUE(hasKeyboard()) << "though the view has not changed";
    controller.collapse();
    leave();

    Q_EMIT notifications.hookExpand(IslandView::note);
    press(*field);
    ASSERT_TRUE(hasKeyboard());
    controller.setMode(IslandMode::compact);
    EXPECT_FALSE(acceptsKeyboard());
    EXPECT_EQ(applications.activated.size(), 3U);
}

} // namespace
