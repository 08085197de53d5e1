#pragma once

#include <QPainter>

#include <numbers>

namespace tirlo {

/// Draws smoothly for as long as it lives and then gives the painter back as it was.
class PainterScope
{
public:
    explicit PainterScope(QPainter &painter)
        : m_painter(painter)
    {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
    }
    ~PainterScope() { m_painter.restore(); }
    PainterScope(const PainterScope &) = delete;
    PainterScope &operator=(const PainterScope &) = delete;

private:
    QPainter &m_painter;
};

/// Degrees of an angle in radians; both turn from +x toward +y.
[[nodiscard]] constexpr double degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

} // namespace tirlo
