#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tirlo::e2e {

/// True on the virtual desktop that `tools/stage` makes, whose pointer and pictures are ours.
[[nodiscard]] bool isVirtualDesktop();

/// Runs xdotool on the display that the user sees, which on Wayland is not the program's own.
void useXdotool(const QStringList &arguments);

/// Moves the pointer and presses its left button, in screen pixels.
void clickAt(int x, int y);

/// The horizontal middle of the screen, in pixels.
[[nodiscard]] int screenMiddle();

/// Moves the pointer without pressing.
void movePointer(int x, int y);

/// Keeps a picture of the screen's top centre, 760 by 340 pixels, in the file.
void takePicture(const QString &path);

/// Runs the event loop for that time.
void rest(int milliseconds);

/// Runs the event loop until the condition holds; false when it does not within the time.
bool waitUntil(const std::function<bool()> &condition, int milliseconds = 5000);

} // namespace tirlo::e2e
