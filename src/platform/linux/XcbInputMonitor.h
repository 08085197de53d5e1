#pragma once

#include "platform/InputMonitor.h"

#include <QAbstractNativeEventFilter>

namespace tirlo {

/// Watches the raw input of the whole X server, which nobody's grab withholds and which is free of
/// grabs itself.
///
/// Without the X input extension it stays silent.
class XcbInputMonitor final : public InputMonitor, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    XcbInputMonitor();
    ~XcbInputMonitor() override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool selectEvents();
    void handleInputEvent(const void *event);
    void handleKeyPress(std::uint32_t scanCode);
    void handleLeftRelease();

    std::uint8_t m_inputExtension = 0;
    std::uint8_t m_keyboardEvent = 0;
    /// The X modifier mask in force at this point of the event stream.
    std::uint32_t m_modifiers = 0;
    bool m_isLeftPressOurs = false;
};

} // namespace tirlo
