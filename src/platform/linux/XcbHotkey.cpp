#include "XcbHotkey.h"

#include "X11.h"

#include "platform/KeyCodes.h"

#include <QCoreApplication>

// A member of one of its records is called like a keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <span>
#include <utility>

namespace tirlo {

namespace {

/// Seconds until a combination that another program has is tried again.
constexpr double retrySeconds = 60;
constexpr int modifierCount = 8;
constexpr std::uint32_t mostKeyCode = 255;

bool isLock(xcb_keysym_t symbol)
{
    constexpr xcb_keysym_t scrollLock = 0xFF14;
    constexpr xcb_keysym_t numLock = 0xFF7F;
    return symbol == scrollLock || symbol == numLock;
}

/// Whether a press of the key gives a lock in any of the keyboard's layouts.
bool locks(const xcb_get_keyboard_mapping_reply_t &symbols, int key)
{
    const std::span all(xcb_get_keyboard_mapping_keysyms(&symbols),
                        std::size_t(xcb_get_keyboard_mapping_keysyms_length(&symbols)));
    const std::size_t width = symbols.keysyms_per_keycode;
    const std::size_t first = std::size_t(key) * width;
    return key >= 0 && first + width <= all.size()
        && std::ranges::any_of(all.subspan(first, width), isLock);
}

/// The modifiers that a lock key switches on and off: that of Caps Lock has a place of its own, and
/// those of Num Lock and Scroll Lock are wherever the keyboard's layout has them.
std::vector<std::uint16_t> lockModifiers(const X11 &x11)
{
    const xcb_setup_t &setup = *xcb_get_setup(x11.connection());
    const auto modifierCookie = xcb_get_modifier_mapping(x11.connection());
    const auto symbolCookie
        = xcb_get_keyboard_mapping(x11.connection(), setup.min_keycode,
                                   std::uint8_t(setup.max_keycode - setup.min_keycode + 1));
    const XReply<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(x11.connection(), modifierCookie, nullptr));
    const XReply<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(x11.connection(), symbolCookie, nullptr));

    std::vector<std::uint16_t> found{XCB_MOD_MASK_LOCK};
    if (!modifiers || !symbols)
        return found;
    const std::uint32_t ours = KeyCodes::modifiersToX(ModifierBits::all);
    const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        const std::span row(keys + modifier * modifiers->keycodes_per_modifier,
                            modifiers->keycodes_per_modifier);
        const auto mask = std::uint16_t(1 << modifier);
        const bool isLocked = std::ranges::any_of(row, [&](xcb_keycode_t key) {
            return key != 0 && locks(*symbols, key - setup.min_keycode);
        });
        if (isLocked && mask != XCB_MOD_MASK_LOCK && !(mask & ours))
            found.push_back(mask);
    }
    return found;
}

/// The modifiers with each set of locks that may be on beside them.
std::vector<std::uint16_t> withLocks(std::uint16_t modifiers, const X11 &x11)
{
    std::vector<std::uint16_t> all{modifiers};
    for (const std::uint16_t lock : lockModifiers(x11)) {
        for (std::size_t i = 0, count = all.size(); i < count; ++i)
            all.push_back(all[i] | lock);
    }
    return all;
}

} // namespace

XcbHotkey::XcbHotkey(MainQueue &queue)
    : m_queue(queue)
{
    const X11 x11;
    if (!x11)
        return;
    // Qt has chosen the events that tell of another keyboard or layout.
    const auto *keyboard = xcb_get_extension_data(x11.connection(), &xcb_xkb_id);
    if (keyboard->present)
        m_keyboardEvent = keyboard->first_event;
    qApp->installNativeEventFilter(this);
}

XcbHotkey::~XcbHotkey()
{
    release();
}

void XcbHotkey::hold(const std::optional<KeyPress> &key)
{
    std::optional<Chord> chord;
    const auto keyCode = key ? KeyCodes::toScanCode(key->keyCode) : std::nullopt;
    // The server counts keys in a byte, and a keyboard may have more.
    if (keyCode && *keyCode <= mostKeyCode && (key->modifiers & ~ModifierBits::all) == 0)
        chord = {std::uint8_t(*keyCode), std::uint16_t(KeyCodes::modifiersToX(key->modifiers))};
    if (chord == m_chord)
        return;
    release();
    m_chord = chord;
    grab();
}

bool XcbHotkey::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const std::uint8_t type = event->response_type & 0x7f;

    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
        // Keys come to the root window by a grab alone.
        const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event);
        const bool isOurs
            = m_chord && key->detail == m_chord->keyCode && key->event == X11().root();
        if (isOurs && type == XCB_KEY_PRESS) {
            keyDown(key->time);
        } else if (isOurs) {
            m_isDown = false;
            m_upTime = key->time;
        }
    } else if (type == XCB_MAPPING_NOTIFY) {
        noteNewKeyboard();
    } else if (m_keyboardEvent != 0 && type == m_keyboardEvent) {
        const std::uint8_t kind
            = reinterpret_cast<const xcb_xkb_state_notify_event_t *>(event)->xkbType;
        if (kind == XCB_XKB_MAP_NOTIFY || kind == XCB_XKB_NEW_KEYBOARD_NOTIFY)
            noteNewKeyboard();
    }
    // Qt takes the time of the user's last action from the event.
    return false;
}

void XcbHotkey::keyDown(std::uint32_t time)
{
    // A key that is held goes up and down in the same moment, again and again.
    if (std::exchange(m_isDown, true) || time == m_upTime)
        return;
    // Queued, so that no one runs amid Qt's reading of events.
    QMetaObject::invokeMethod(this, &Hotkey::pressed, Qt::QueuedConnection);
}

/// A change of the layout comes as an event for each of its keys.
void XcbHotkey::noteNewKeyboard()
{
    if (!std::exchange(m_knowsOfNewKeyboard, true))
        QMetaObject::invokeMethod(this, &XcbHotkey::followKeyboard, Qt::QueuedConnection);
}

void XcbHotkey::followKeyboard()
{
    m_knowsOfNewKeyboard = false;
    const bool isUpToDate = !m_grabbed.empty() && m_grabbed == withLocks(m_chord->modifiers, X11());
    if (isUpToDate)
        return;
    release();
    grab();
}

/// Takes the chord with every set of locks, or else with none: one that comes now and then would
/// be a riddle.
void XcbHotkey::grab()
{
    const X11 x11;
    m_nextTry.cancel();
    if (!x11 || !m_chord)
        return setTaken(false);

    const std::vector<std::uint16_t> wanted = withLocks(m_chord->modifiers, x11);
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint16_t modifiers : wanted)
        requests.push_back(xcb_grab_key_checked(x11.connection(), false, x11.root(), modifiers,
                                                m_chord->keyCode, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    bool isTaken = false;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const XReply<xcb_generic_error_t> error(xcb_request_check(x11.connection(), requests[i]));
        isTaken |= error && error->error_code == XCB_ACCESS;
        if (!error)
            m_grabbed.push_back(wanted[i]);
    }
    if (isTaken) {
        release();
        m_nextTry = m_queue.after(retrySeconds, this, [this] { grab(); });
    }
    setTaken(isTaken);
}

void XcbHotkey::release()
{
    const X11 x11;
    for (const std::uint16_t modifiers : m_grabbed)
        xcb_ungrab_key(x11.connection(), m_chord->keyCode, x11.root(), modifiers);
    if (!m_grabbed.empty())
        xcb_flush(x11.connection());
    m_grabbed.clear();
    m_isDown = false;
}

} // namespace tirlo
