#include "QtPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace tirlo {

QPointF QtPointer::position() const
{
    return QCursor::pos();
}

bool QtPointer::seesWholeDesktop() const
{
    // Within a Wayland session the X server hears of the pointer over X windows alone.
    static const bool isX = QGuiApplication::platformName() == QLatin1String("xcb");
    static const bool isWayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    return isX && !isWayland;
}

} // namespace tirlo
