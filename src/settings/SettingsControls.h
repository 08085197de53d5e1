#pragma once

#include <QString>

class QLabel;
class QPushButton;
class QWidget;

/// The plain controls that several sections of the settings share, in the desktop's look.
namespace tirlo::SettingsControls {

/// A small line of text, 11 pixels high, that wraps where it must and can be copied.
[[nodiscard]] QLabel *caption(const QString &text = {});

/// A push button that the return key presses too; `section` tells a screen reader what it is for.
[[nodiscard]] QPushButton *button(const QString &title, const QString &section);

} // namespace tirlo::SettingsControls
