#pragma once

class QIcon;

/// The program's own picture, as the desktop shows it.
namespace tirlo::ProgramIcon {

/// For the desktop's bar: a template, light where the bar is dark.
///
/// It has a faint edge of the other tone, so that it is seen on a bar of the wrong one too. Where
/// the desktop's theme has the picture it bears its name, by which a bar finds and colours it.
[[nodiscard]] QIcon onBar(bool isDark);

/// For windows: in its own colours.
[[nodiscard]] QIcon ofWindow();

} // namespace tirlo::ProgramIcon
