#include "NativeScreen.h"

#include <QGuiApplication>
#include <QScreen>

namespace tirlo {

QRect nativeScreen(const QRectF &frame)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        // Qt scales a screen around its own corner.
        if (screen->geometry() == frame)
            return {screen->geometry().topLeft(),
                    (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize()};
    }
    return {};
}

} // namespace tirlo
