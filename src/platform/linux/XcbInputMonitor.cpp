#include "XcbInputMonitor.h"

#include "X11.h"

#include "platform/KeyCodes.h"

#include <QApplication>

#include <xcb/xinput.h>
// A member of one of its records is called like a keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <array>
#include <utility>

namespace tirlo {

namespace {

constexpr std::uint32_t leftButton = 1;

/// True while the keys go to one of our windows.
bool isKeyboardOurs()
{
    return QGuiApplication::focusWindow() || QApplication::activePopupWidget();
}

/// True for the physical button that the user's button order makes the left one.
bool isLeftButton(std::uint32_t physicalButton)
{
    // The turns of a wheel come as buttons, too, and come often.
    constexpr std::uint32_t lastRealButton = 3;
    if (physicalButton == 0 || physicalButton > lastRealButton)
        return false;
    const X11 x11;
    const auto cookie = xcb_get_pointer_mapping(x11.connection());
    const XReply<xcb_get_pointer_mapping_reply_t> reply(
        xcb_get_pointer_mapping_reply(x11.connection(), cookie, nullptr));
    if (!reply || physicalButton > reply->map_len)
        return physicalButton == leftButton;
    return xcb_get_pointer_mapping_map(reply.get())[physicalButton - 1] == leftButton;
}

} // namespace

XcbInputMonitor::XcbInputMonitor()
{
    if (selectEvents())
        qApp->installNativeEventFilter(this);
}

XcbInputMonitor::~XcbInputMonitor() = default;

bool XcbInputMonitor::selectEvents()
{
    const X11 x11;
    if (!x11)
        return false;
    const auto *input = xcb_get_extension_data(x11.connection(), &xcb_input_id);
    const auto *keyboard = xcb_get_extension_data(x11.connection(), &xcb_xkb_id);
    if (!input->present || !keyboard->present)
        return false;
    m_inputExtension = input->major_opcode;
    m_keyboardEvent = keyboard->first_event;

    // From 2.1 on raw events come while another program grabs the input, too. Qt has asked for 2.2
    // or more, and after that no one may ask for less.
    const auto version = xcb_input_xi_query_version(x11.connection(), 2, 2);
    const XReply<xcb_input_xi_query_version_reply_t> answer(
        xcb_input_xi_query_version_reply(x11.connection(), version, nullptr));
    if (!answer || answer->major_version < 2)
        return false;

    // Qt's selection on the root window is for all devices, which is another one than this. The
    // root window of any screen hears of the input on all of them.
    struct
    {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS
                    | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(x11.connection(), x11.root(), 1, &selection.head);

    // A raw event doesn't tell the modifiers, and asking for them on its arrival may be too late.
    // Their changes come in the same stream of events, so that they are known at each point of it.
    xcb_xkb_select_events(x11.connection(), XCB_XKB_ID_USE_CORE_KBD,
                          XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0,
                          nullptr);
    const auto state = xcb_xkb_get_state(x11.connection(), XCB_XKB_ID_USE_CORE_KBD);
    const XReply<xcb_xkb_get_state_reply_t> present(
        xcb_xkb_get_state_reply(x11.connection(), state, nullptr));
    m_modifiers = present ? present->mods : 0;
    return true;
}

bool XcbInputMonitor::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const std::uint8_t type = event->response_type & 0x7f;

    if (type == XCB_GE_GENERIC) {
        handleInputEvent(event);
    } else if (type == m_keyboardEvent) {
        const auto *state = reinterpret_cast<const xcb_xkb_state_notify_event_t *>(event);
        if (state->xkbType == XCB_XKB_STATE_NOTIFY)
            m_modifiers = state->mods;
    }
    return false;
}

void XcbInputMonitor::handleInputEvent(const void *event)
{
    const auto *head = static_cast<const xcb_ge_generic_event_t *>(event);
    if (head->extension != m_inputExtension)
        return;
    // All of the four have the detail in the same place.
    const std::uint32_t detail
        = static_cast<const xcb_input_raw_key_press_event_t *>(event)->detail;

    switch (head->event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
        handleKeyPress(detail);
        break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
        if (isLeftButton(detail))
            m_isLeftPressOurs = false;
        break;
    case XCB_INPUT_BUTTON_PRESS:
        // Qt's own selection brings this, after the raw press and for our windows alone.
        m_isLeftPressOurs |= detail == leftButton;
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        if (isLeftButton(detail))
            handleLeftRelease();
        break;
    default:
        break;
    }
}

void XcbInputMonitor::handleKeyPress(std::uint32_t scanCode)
{
    const auto keyCode = KeyCodes::fromScanCode(scanCode);
    if (!keyCode || isKeyboardOurs())
        return;
    const KeyPress key{*keyCode, KeyCodes::modifiersFromX(m_modifiers)};
    // Queued, so that no one runs amid Qt's reading of events.
    QMetaObject::invokeMethod(
        this, [this, key] { Q_EMIT keyDown(key); }, Qt::QueuedConnection);
}

void XcbInputMonitor::handleLeftRelease()
{
    if (std::exchange(m_isLeftPressOurs, false))
        return;
    QMetaObject::invokeMethod(this, &InputMonitor::leftButtonUp, Qt::QueuedConnection);
}

} // namespace tirlo
