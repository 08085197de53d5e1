#include "NativeScreen.h"

#include "X11.h"

#include <QGuiApplication>
#include <QScreen>

#include <xcb/randr.h>

namespace tirlo {

namespace {

/// The place of the monitor of that name as the X server has it; empty when it knows none.
QRect serversPlace(const QByteArray &name)
{
    const X11 x11;
    const auto *extension = x11 ? xcb_get_extension_data(x11.connection(), &xcb_randr_id) : nullptr;
    if (!extension || !extension->present)
        return {};
    const xcb_atom_t wanted = x11.atom(name);
    const XReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        x11.connection(), xcb_randr_get_monitors(x11.connection(), x11.root(), true), nullptr));
    if (!reply)
        return {};
    for (auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get()); monitor.rem;
         xcb_randr_monitor_info_next(&monitor)) {
        if (monitor.data->name == wanted)
            return {monitor.data->x, monitor.data->y, monitor.data->width, monitor.data->height};
    }
    return {};
}

} // namespace

QRect nativePlace(const QScreen &screen)
{
    const QRect place = serversPlace(screen.name().toUtf8());
    if (!place.isEmpty())
        return place;
    return {screen.geometry().topLeft(),
            (QSizeF(screen.size()) * screen.devicePixelRatio()).toSize()};
}

QRectF frameOf(const QScreen &screen)
{
    const QRect place = nativePlace(screen);
    return {place.topLeft(), (QSizeF(place.size()) / screen.devicePixelRatio()).toSize()};
}

QRect nativeScreen(const QRectF &frame)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        if (frameOf(*screen) == frame)
            return nativePlace(*screen);
    }
    return {};
}

} // namespace tirlo
