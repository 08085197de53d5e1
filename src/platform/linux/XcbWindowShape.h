#pragma once

#include "XcbCompositor.h"

#include "platform/WindowShape.h"

#include <QPointer>
#include <QWindow>

#include <vector>

namespace tirlo {

/// The shape of a window by the X shape extension; without X it does nothing.
///
/// Where nobody blends windows, what should be see-through would be black, so that the window's
/// bounds are cut to the same region; they follow when a compositor comes or goes.
class XcbWindowShape final : public WindowShape
{
public:
    XcbWindowShape();

    void setInputRegion(QWindow &window, const QRegion &region) override;

private:
    struct Shaped
    {
        QPointer<QWindow> window;
        QRegion region;
    };

    void apply(const Shaped &shaped) const;

    XcbCompositor m_compositor;
    std::vector<Shaped> m_shaped;
};

} // namespace tirlo
