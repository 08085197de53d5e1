#pragma once

#include "XcbStack.h"

#include "platform/PanelWindow.h"

namespace tirlo {

/// Order and keyboard of a window by the X server alone.
///
/// Without X nothing covers a window, and Qt asks the desktop for the keyboard.
class XcbPanelWindow final : public PanelWindow
{
    Q_OBJECT

public:
    /// The stack outlives this object.
    explicit XcbPanelWindow(const XcbStack &stack);

    [[nodiscard]] bool isCovered(const QWindow &window, const QRectF &part,
                                 Cover cover) const override;
    void raise(QWindow &window) override;
    void takeKeyboard(QWindow &window) override;
    bool returnKeyboard(QWindow &window) override;

private:
    [[nodiscard]] xcb_window_t focus() const;

    const XcbStack &m_stack;
    /// Who had the keyboard before it was taken.
    xcb_window_t m_before = XCB_NONE;
};

} // namespace tirlo
