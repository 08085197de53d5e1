#pragma once

#include "mascot/BotDrawing.h"
#include "mascot/BotEngine.h"
#include "mascot/BotShapes.h"

#include <QImage>

#include <gtest/gtest.h>

namespace tirlo {

/// A square canvas of 200 points, so that the body radius is 60, with a mascot painted on it.
class Canvas
{
public:
    static constexpr int side = 200;
    static constexpr double R = 60;

    explicit Canvas(const BotEngine &engine, const QColor &background = Qt::black)
        : m_frame(BotFrame::of(engine, QSizeF(side, side)))
        , m_image(side, side, QImage::Format_ARGB32_Premultiplied)
    {
        m_image.fill(background);
        QPainter painter(&m_image);
        const QSizeF size(side, side);
        drawHandsBehind(painter, engine, size);
        draw(painter, engine, size);
        drawHandsAndExtras(painter, engine, size);
        EXPECT_TRUE(painter.transform().isIdentity() && !painter.hasClipping()
                    && painter.opacity() == 1)
            << "the painter is given back as it was";
    }

    /// The colour at a place given in body radii from the body's centre.
    QColor at(double x, double y) const
    {
        return m_image.pixelColor(int(m_frame.cx + x * R), int(m_frame.cy + y * R));
    }

    const QImage &image() const { return m_image; }

private:
    BotFrame m_frame;
    QImage m_image;
};

/// How many pixels of the area the predicate holds for.
template<typename Predicate>
int count(const QImage &image, const QRect &area, Predicate predicate)
{
    int pixels = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            pixels += predicate(image.pixelColor(x, y)) ? 1 : 0;
    }
    return pixels;
}

inline bool isBlack(const QColor &color)
{
    return color.lightness() == 0;
}

/// The ink of the big mascot's eyes or a mini's, which the island's black is not.
inline bool isInk(const QColor &color)
{
    return color.lightness() > 8 && color.lightness() < 40;
}

} // namespace tirlo
