#pragma once

#include "platform/WindowList.h"

namespace tirlo {

/// A window list in which a test brings applications to the front, or one to all of a screen.
class FakeWindowList final : public WindowList
{
public:
    [[nodiscard]] bool isFullScreen(const QRectF &screen) const override
    {
        return screen == m_full;
    }

    void activate(const RunningApplication &application)
    {
        Q_EMIT applicationActivated(application);
    }

    /// A window fills that screen, or none does.
    void fill(const QRectF &screen)
    {
        m_full = screen;
        Q_EMIT arrangementChanged();
    }

private:
    QRectF m_full;
};

} // namespace tirlo
