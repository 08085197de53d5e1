#pragma once

#include <QPointF>

namespace tirlo {

/// The pointer of the desktop, wherever it is.
class Pointer
{
public:
    virtual ~Pointer() = default;

    /// Where the pointer is, in logical points of the whole desktop, y growing downward.
    ///
    /// Cheap enough to be asked on every frame.
    [[nodiscard]] virtual QPointF position() const = 0;

    /// False where the desktop tells of the pointer only while it is over a window of ours.
    [[nodiscard]] virtual bool seesWholeDesktop() const = 0;
};

} // namespace tirlo
