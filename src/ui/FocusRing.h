#pragma once

#include <QWidget>

/// The ring around the control that the keyboard acts on.
namespace tirlo::FocusRing {

/// True while the control has the focus and the user got there by the keyboard.
[[nodiscard]] inline bool isShown(const QWidget &control)
{
    return control.hasFocus() && control.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

} // namespace tirlo::FocusRing
