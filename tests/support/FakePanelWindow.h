#pragma once

#include "platform/PanelWindow.h"

#include <QWindow>

namespace tirlo {

/// A window's surroundings as a test plays them: what covers it, and who has the keyboard.
class FakePanelWindow final : public PanelWindow
{
public:
    [[nodiscard]] bool isCovered(const QWindow &, const QRectF &, Cover cover) const override
    {
        return isBelowMenu ? cover == Cover::anything : isBelowWindow;
    }

    void raise(QWindow &) override
    {
        ++raises;
        isBelowWindow = isBelowWindow && coverInsists;
        isBelowMenu = false;
    }

    void takeKeyboard(QWindow &window) override { window.requestActivate(); }

    bool returnKeyboard(QWindow &window) override { return window.isActive() ? ownerLives : true; }

    /// Something else comes to lie where the test says.
    void change() { Q_EMIT orderChanged(); }

    bool isBelowWindow = false;
    bool isBelowMenu = false;
    /// What lies over the window comes back above it each time.
    bool coverInsists = false;
    /// Whoever had the keyboard before is still there.
    bool ownerLives = false;
    int raises = 0;
};

} // namespace tirlo
