#pragma once

#include "Sheet.h"

#include <QDir>

namespace tirlo {

/// The greeting as a strip of moments, up to its end.
[[nodiscard]] Sheet greetingSheet();

/// Greetings that are told to fold, at several moments.
[[nodiscard]] Sheet foldedGreetingSheet();

/// Writes the greeting and its fold as numbered pictures, 25 a second; false when one can't be
/// written.
[[nodiscard]] bool writeGreetingFrames(const QDir &directory);

} // namespace tirlo
