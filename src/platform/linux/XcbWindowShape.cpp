#include "XcbWindowShape.h"

#include "X11.h"

#include <xcb/shape.h>

#include <cmath>

namespace tirlo {

namespace {

/// The rectangles in device pixels, grown outward so that none loses its edge.
std::vector<xcb_rectangle_t> deviceRectangles(const QRegion &region, double ratio)
{
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(std::size_t(region.rectCount()));
    for (const QRect &rect : region) {
        const double left = std::floor(rect.left() * ratio);
        const double top = std::floor(rect.top() * ratio);
        const double right = std::ceil((rect.left() + rect.width()) * ratio);
        const double bottom = std::ceil((rect.top() + rect.height()) * ratio);
        rectangles.push_back({std::int16_t(left), std::int16_t(top), std::uint16_t(right - left),
                              std::uint16_t(bottom - top)});
    }
    return rectangles;
}

void setShape(xcb_connection_t *connection, xcb_window_t window, xcb_shape_kind_t kind,
              const std::vector<xcb_rectangle_t> &rectangles)
{
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0,
                         0, std::uint32_t(rectangles.size()), rectangles.data());
}

} // namespace

XcbWindowShape::XcbWindowShape()
{
    QObject::connect(&m_compositor, &XcbCompositor::changed, &m_compositor, [this] {
        for (const Shaped &shaped : m_shaped)
            apply(shaped);
    });
}

void XcbWindowShape::setInputRegion(QWindow &window, const QRegion &region)
{
    std::erase_if(m_shaped,
                  [&](const Shaped &shaped) { return !shaped.window || shaped.window == &window; });
    apply(m_shaped.emplace_back(Shaped{&window, region}));
}

void XcbWindowShape::apply(const Shaped &shaped) const
{
    const X11 x11;
    if (!x11 || !shaped.window)
        return;
    const auto rectangles = deviceRectangles(shaped.region, shaped.window->devicePixelRatio());
    const auto native = xcb_window_t(shaped.window->winId());

    setShape(x11.connection(), native, XCB_SHAPE_SK_INPUT, rectangles);
    if (m_compositor.isRunning())
        xcb_shape_mask(x11.connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, native, 0, 0,
                       XCB_PIXMAP_NONE);
    else
        setShape(x11.connection(), native, XCB_SHAPE_SK_BOUNDING, rectangles);
    xcb_flush(x11.connection());
}

} // namespace tirlo
