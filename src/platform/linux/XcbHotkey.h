#pragma once

#include "platform/Hotkey.h"
#include "platform/MainQueue.h"

#include <QAbstractNativeEventFilter>

#include <vector>

namespace tirlo {

/// A combination of keys grabbed from the X server, so that no other window gets its letter.
///
/// In a Wayland session the X server has the keyboard only while one of its own windows does.
class XcbHotkey final : public Hotkey, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// The queue outlives the hotkey.
    explicit XcbHotkey(MainQueue &queue);
    ~XcbHotkey() override;

    void hold(const std::optional<KeyPress> &key) override;

private:
    /// As the X server names a key and what is held with it.
    struct Chord
    {
        std::uint8_t keyCode = 0;
        std::uint16_t modifiers = 0;

        bool operator==(const Chord &) const = default;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void keyDown(std::uint32_t time);
    void noteNewKeyboard();
    void followKeyboard();
    void grab();
    void release();

    MainQueue &m_queue;
    std::uint8_t m_keyboardEvent = 0;
    std::optional<Chord> m_chord;
    /// The chord's modifiers with each set of locks that may be on; empty while nothing is grabbed.
    std::vector<std::uint16_t> m_grabbed;
    bool m_isDown = false;
    /// On the server's clock, in milliseconds.
    std::uint32_t m_upTime = 0;
    bool m_knowsOfNewKeyboard = false;
    WorkItem m_nextTry;
};

} // namespace tirlo
