#pragma once

#include "InputMonitor.h"

#include <optional>

namespace tirlo {

/// One combination of keys that comes to the program alone, whatever window has the keyboard.
///
/// The four of ModifierBits must be held exactly as told; a lock, such as Caps Lock, may be on or
/// off. Where the desktop gives no keys away nothing is ever pressed.
class Hotkey : public QObject
{
    Q_OBJECT

public:
    /// Takes the combination in the place of the one before; nothing gives it up.
    ///
    /// A key that no keyboard has, or modifiers beside the four, are the same as nothing.
    virtual void hold(const std::optional<KeyPress> &key) = 0;

    /// Whether another program has the combination, so that it can't be heard here. It is tried
    /// again when the keyboard changes and once a minute.
    [[nodiscard]] bool isTaken() const { return m_isTaken; }

Q_SIGNALS:
    /// The combination went down; keeping it down reports nothing more.
    void pressed();

    void takenChanged(bool isTaken);

protected:
    void setTaken(bool isTaken)
    {
        if (isTaken == m_isTaken)
            return;
        m_isTaken = isTaken;
        Q_EMIT takenChanged(isTaken);
    }

private:
    bool m_isTaken = false;
};

} // namespace tirlo
