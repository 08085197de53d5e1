#pragma once

#include "Applications.h"

#include <QObject>
#include <QRectF>

namespace tirlo {

/// The windows on the desktop, as far as it tells of them.
class WindowList : public QObject
{
    Q_OBJECT

public:
    /// Whether a full-screen window is what the user sees at the top centre of the screen, whose
    /// frame is given in points of the desktop.
    [[nodiscard]] virtual bool isFullScreen(const QRectF &screen) const = 0;

Q_SIGNALS:
    /// Another application than before has come to the front; it may be this program itself.
    void applicationActivated(const tirlo::RunningApplication &application);

    /// Windows have come, gone or moved: isFullScreen() may say something else.
    void arrangementChanged();
};

} // namespace tirlo
