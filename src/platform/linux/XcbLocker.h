#pragma once

#include "XcbStack.h"

namespace tirlo {

/// Notices a program that locks the screen by nothing but a window of its own over all of it.
///
/// Such a program takes the keyboard for itself, which is tried out only when a window like that
/// comes up. Without X there is none.
class XcbLocker final : public QObject
{
    Q_OBJECT

public:
    /// Both outlive the locker.
    XcbLocker(const XcbStack &stack, MainQueue &queue);

    [[nodiscard]] bool isLocked() const { return !m_curtains.empty(); }

Q_SIGNALS:
    void changed();

private:
    void look();
    void probe(xcb_window_t window);
    void setCurtains(std::vector<xcb_window_t> curtains);
    [[nodiscard]] std::vector<xcb_window_t> wholeScreens() const;
    [[nodiscard]] bool isKeyboardTaken() const;

    const XcbStack &m_stack;
    MainQueue &m_queue;
    /// The windows over a whole screen that nobody looks after, and those of them that lock it.
    std::vector<xcb_window_t> m_known;
    std::vector<xcb_window_t> m_curtains;
};

} // namespace tirlo
