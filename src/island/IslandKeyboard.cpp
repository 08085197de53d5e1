#include "IslandKeyboard.h"

#include "Island.h"
#include "IslandPanel.h"
#include "core/AppState.h"
#include "platform/Applications.h"
#include "ui/FocusWalk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

#include <utility>

namespace tirlo {

IslandKeyboard::IslandKeyboard(AppState &state, Island &island, IslandPanel &panel,
                               Applications &applications)
    : m_state(state)
    , m_island(island)
    , m_panel(panel)
    , m_applications(applications)
{
    // A window that becomes active without a focus would get it on its first control.
    m_panel.setFocus();
    m_panel.installEventFilter(this);
    m_observers.follow(m_state.mode, [this] { followCard(); });
    m_observers.follow(m_state.view, [this] { followCard(); });
    // The next key leads to a new request, wherever the user was.
    m_observers.follow(m_state.pendingApproval, [this] {
        if (m_isGiven && m_state.pendingApproval.value())
            m_panel.setFocus();
    });
    // A field that was left, as by Escape, needs the keyboard no more.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, const QWidget *now) {
        if (!now && !m_isGiven && m_state.view != IslandView::prompt)
            giveBack();
    });
}

void IslandKeyboard::toggle()
{
    if (m_isGiven || m_panel.isActiveWindow())
        giveBack();
    else if (m_panel.isVisible() && m_state.mode == IslandMode::expanded
             && m_state.view != IslandView::greeting)
        give();
}

void IslandKeyboard::give()
{
    if (!std::exchange(m_isGiven, true))
        m_island.keyboardEntered();
    m_panel.setFocus();
    m_panel.takeKeyboard();
}

void IslandKeyboard::giveBack()
{
    m_panel.setFocus();
    if (std::exchange(m_isGiven, false))
        m_island.keyboardLeft();
    if (!m_panel.releaseKeyboard() && m_state.lastExternalApp)
        m_applications.activate(*m_state.lastExternalApp);
}

/// The prompt's text field gets the keyboard without the program coming to the front. Any other
/// card hands it back, until a text field of its own is pressed, unless the user gave it.
void IslandKeyboard::followCard()
{
    const bool isOpen = m_state.mode == IslandMode::expanded && m_panel.isVisible();
    if (isOpen && m_state.view == IslandView::prompt)
        m_panel.takeKeyboard();
    else if (!isOpen || !m_isGiven)
        giveBack();
}

bool IslandKeyboard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        return keyPressed(key->key(), key->isAutoRepeat());
    }
    // The user has gone to another window, which needs no help to have the keyboard.
    if (event->type() == QEvent::WindowDeactivate)
        giveBack();
    return QObject::eventFilter(watched, event);
}

/// What no control of the island has use for; true when it means something here.
bool IslandKeyboard::keyPressed(int key, bool isRepeated)
{
    switch (key) {
    case Qt::Key_Escape:
        giveBack();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // At once, and not after the time that a press is shown: another card may be there by then.
        if (auto *button = qobject_cast<QAbstractButton *>(m_panel.focusWidget());
            button && !isRepeated)
            button->click();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Left:
        return FocusWalk::step(m_panel, false);
    case Qt::Key_Down:
    case Qt::Key_Right:
        return FocusWalk::step(m_panel, true);
    default:
        return false;
    }
}

} // namespace tirlo
