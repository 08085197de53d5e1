#pragma once

#include "XcbSelection.h"

namespace tirlo {

/// Tells whether a compositing manager blends windows, so that a see-through pixel is seen through.
///
/// Without X blending is taken for granted.
class XcbCompositor final : public XcbSelection
{
    Q_OBJECT

public:
    XcbCompositor()
        : XcbSelection("_NET_WM_CM_S", true)
    {
    }

    [[nodiscard]] bool isRunning() const { return isOwned(); }
};

} // namespace tirlo
