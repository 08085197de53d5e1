#include "DesktopLook.h"

#include "X11.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QStyle>

namespace tirlo {

namespace {

/// Half of the brightness that a colour can have.
constexpr int middleLightness = 128;

/// Whether the colour that a tray gives for its pictures is light; empty where it gives none.
std::optional<bool> hasLightPictures()
{
    const X11 x11;
    if (!x11)
        return std::nullopt;
    const auto selection = x11.atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(x11.screen()));
    const auto cookie = xcb_get_selection_owner(x11.connection(), selection);
    const XReply<xcb_get_selection_owner_reply_t> tray(
        xcb_get_selection_owner_reply(x11.connection(), cookie, nullptr));
    if (!tray || tray->owner == XCB_NONE)
        return std::nullopt;
    // The first of four colours, 16 bits a part.
    const auto parts = x11.numbers(tray->owner, x11.atom("_NET_SYSTEM_TRAY_COLORS"));
    if (parts.size() < 3)
        return std::nullopt;
    const QColor color(int(parts[0] >> 8 & 0xff), int(parts[1] >> 8 & 0xff),
                       int(parts[2] >> 8 & 0xff));
    return color.lightness() >= middleLightness;
}

/// Whether a bar is dark that tells nothing of itself, by what the user prefers.
///
/// GNOME's is black always, and others mostly; Plasma's takes the programs' colours.
bool isBarDark(const std::optional<bool> &prefersDark)
{
    const QList<QByteArray> desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    if (desktops.contains("GNOME"))
        return true;
    const bool isDark = !desktops.contains("KDE")
        || QGuiApplication::palette().color(QPalette::Window).lightness() < middleLightness;
    return prefersDark.value_or(isDark);
}

} // namespace

DesktopLook::DesktopLook()
{
    qApp->installEventFilter(this);
    connect(&m_portal, &PortalSettings::changed, this, &DesktopLook::look);
    connect(&m_tray, &XcbSelection::changed, this, &DesktopLook::look);
    look();
}

bool DesktopLook::eventFilter(QObject *watched, QEvent *event)
{
    // What the application itself is told once its theme is another.
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        look();
    return false;
}

void DesktopLook::look()
{
    const bool reducesMotion
        = m_portal.reducesMotion() || !QApplication::style()->styleHint(QStyle::SH_Widget_Animate);
    const bool hasDarkBar = hasLightPictures().value_or(isBarDark(m_portal.prefersDark()));
    if (reducesMotion == m_reducesMotion && hasDarkBar == m_hasDarkBar)
        return;
    m_reducesMotion = reducesMotion;
    m_hasDarkBar = hasDarkBar;
    Q_EMIT changed();
}

} // namespace tirlo
