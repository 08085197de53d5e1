#pragma once

#include <QRegion>

class QWindow;

namespace tirlo {

/// Says which part of a window takes the pointer, and where the desktop is to show it.
///
/// What it draws stays as it is; but on a desktop that can't blend windows only that part is shown.
///
/// Regions are in logical points, relative to the window's top-left corner.
class WindowShape
{
public:
    virtual ~WindowShape() = default;

    /// Limits the pointer to the region; clicks elsewhere reach the window beneath.
    virtual void setInputRegion(QWindow &window, const QRegion &region) = 0;
};

} // namespace tirlo
