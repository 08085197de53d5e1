#include "XDisplay.h"

#include <xcb/xcb.h>

namespace tirlo {

QString missingDisplay()
{
    const QString name = qEnvironmentVariable("DISPLAY");
    if (name.isEmpty())
        return QStringLiteral("there is no X display to show the island on: DISPLAY is not set.");
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool isReached = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReached ? QString() : QStringLiteral("the X display %1 can't be reached.").arg(name);
}

} // namespace tirlo
