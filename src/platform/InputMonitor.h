#pragma once

#include <QObject>

#include <cstdint>

namespace tirlo {

/// One key going down.
struct KeyPress
{
    /// Virtual key code; see KeyCodes.
    std::uint16_t keyCode = 0;
    /// The ModifierBits that were held, and no other bits.
    std::uint32_t modifiers = 0;

    bool operator==(const KeyPress &) const = default;
};

/// Watches what the user does in other programs, without ever keeping it from them.
///
/// What is bound for our own windows is not reported. Reports come on the main thread, a little
/// after the event and in order. Where the desktop doesn't allow watching none come.
class InputMonitor : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    /// A key went down; holding it reports nothing more.
    void keyDown(const tirlo::KeyPress &key);

    /// The left mouse button was released after a press on something that isn't ours.
    void leftButtonUp();
};

} // namespace tirlo
