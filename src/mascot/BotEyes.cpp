#include "BotEyes.h"

#include "BotEngine.h"
#include "BotShapes.h"
#include "PainterScope.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

using std::numbers::pi;

/// Half the angle between the eyes.
constexpr double eyeLongitude = 0.37;
constexpr double restLatitude = -0.12;
/// Eyes that look away more than this are on the far side.
constexpr double horizon = 0.04;
/// The narrowest a foreshortened eye gets.
constexpr double leastForeshortening = 0.18;
constexpr double miniEyeScale = 1.9;
/// A fifth of a radian apart, these wind 2.2 times.
constexpr int spiralPoints = 70;

constexpr BotColor heartRed{0xff / 255.0, 0x4d / 255.0, 0x6d / 255.0};
constexpr BotColor starGold{0xf7 / 255.0, 0xb3 / 255.0, 0x2b / 255.0};

/// One eye to draw.
struct Eye
{
    QPainter &painter;
    QColor ink;
    double w;
    double h;
    double open;
    /// -1 left, 1 right.
    double sd;
    double time;
};

void fillRounded(const Eye &eye, QRectF rect, double radius)
{
    radius = std::min({radius, rect.width() / 2, rect.height() / 2});
    eye.painter.setBrush(eye.ink);
    eye.painter.drawRoundedRect(rect, radius, radius);
}

void strokePath(const Eye &eye, const QPainterPath &path, double width)
{
    QPen pen(eye.ink, width, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    eye.painter.strokePath(path, pen);
}

/// Strokes an arc around (0, y); degrees from +x toward +y, a negative sweep going back.
void strokeArc(const Eye &eye, double y, double radius, double start, double sweep, double width)
{
    const QRectF circle(-radius, y - radius, 2 * radius, 2 * radius);
    QPainterPath path;
    path.arcMoveTo(circle, -start);
    path.arcTo(circle, -start, -sweep);
    strokePath(eye, path, width);
}

double lidHeight(const Eye &eye)
{
    return std::max(eye.h * eye.open, eye.w * 0.3);
}

void drawPill(const Eye &eye)
{
    const double height = lidHeight(eye);
    fillRounded(eye, {-eye.w / 2, -height / 2, eye.w, height}, std::min(height / 2, eye.w / 2));
}

void drawHappy(const Eye &eye)
{
    strokeArc(eye, 0.18 * eye.h, 0.82 * eye.w, 192, -24, 0.5 * eye.w);
}

void drawSpiral(const Eye &eye)
{
    QPainterPath path;
    for (int i = 0; i < spiralPoints; ++i) {
        const double a = 0.2 * i;
        const double radius = eye.w * (0.06 + a * 0.058);
        const double angle = eye.sd * 9 * eye.time + a;
        const QPointF point(radius * std::cos(angle), radius * std::sin(angle));
        if (i == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    strokePath(eye, path, 0.22 * eye.w);
}

/// Flat above, round below.
void drawCup(const Eye &eye)
{
    const double x = eye.w / 2;
    const double y = lidHeight(eye) / 2;
    const double r = std::min(x, y);
    QPainterPath path;
    path.moveTo(-x, -y);
    path.lineTo(x, -y);
    path.lineTo(x, y - r);
    path.quadTo(x, y, x - r, y);
    path.lineTo(r - x, y);
    path.quadTo(-x, y, -x, y - r);
    path.closeSubpath();
    eye.painter.fillPath(path, eye.ink);
}

void drawShape(Eye eye, EyeShape shape)
{
    const double w = eye.w;
    const double h = eye.h;
    switch (shape) {
    case EyeShape::pill:
        return drawPill(eye);
    case EyeShape::wide:
        eye.w *= 1.16;
        eye.h *= 1.12;
        return drawPill(eye);
    case EyeShape::dot:
        eye.painter.setBrush(eye.ink);
        return eye.painter.drawEllipse(QRectF(-0.45 * w, -0.45 * w, 0.9 * w, 0.9 * w));
    case EyeShape::line:
        eye.painter.rotate(degrees(eye.sd * -0.2));
        return fillRounded(eye, {-0.78 * w, -0.21 * w, 1.56 * w, 0.42 * w}, 0.21 * w);
    case EyeShape::flat:
        return fillRounded(eye, {-0.72 * w, -0.2 * w, 1.44 * w, 0.4 * w}, 0.21 * w);
    case EyeShape::happy:
        return drawHappy(eye);
    case EyeShape::closed:
        return strokeArc(eye, -0.08 * h, 0.78 * w, 15, 150, 0.36 * w);
    case EyeShape::spiral:
        return drawSpiral(eye);
    case EyeShape::heart:
        return eye.painter.fillPath(heartShape(1.2 * w), heartRed.paint());
    case EyeShape::star:
        eye.painter.rotate(degrees(eye.sd * 1.5 * eye.time));
        return eye.painter.fillPath(starShape(1.05 * w, 0.46 * w), starGold.paint());
    case EyeShape::tired:
        fillRounded(eye, {-w / 2, -0.02 * h, w, 0.38 * h}, 0.5 * w);
        return fillRounded(eye, {-0.62 * w, -0.1 * h, 1.24 * w, 0.22 * w}, 0.11 * w);
    case EyeShape::wink:
        return eye.sd < 0 ? drawPill(eye) : drawHappy(eye);
    case EyeShape::cup:
        return drawCup(eye);
    }
}

/// An angle brought into -pi...pi.
double wrapped(double angle)
{
    return std::fmod(std::fmod(angle + pi, 2 * pi) + 2 * pi, 2 * pi) - pi;
}

} // namespace

EyeShape eyeOnShow(const BotEngine &engine)
{
    if (engine.morph > 0.5) {
        if (engine.isChewing)
            return EyeShape::happy;
        if (engine.slotHTarget > 0.05 || engine.slotH > 0.1)
            return EyeShape::cup;
    }
    return engine.shownEye();
}

void drawEyeShape(QPainter &painter, const BotEngine &engine, EyeShape shape, double w, double h,
                  double sd)
{
    const BotColor &ink = engine.isMini ? PebboConst::miniInk : PebboConst::ink;
    painter.setPen(Qt::NoPen);
    drawShape({.painter = painter,
               .ink = ink.paint(),
               .w = w,
               .h = h,
               .open = engine.open,
               .sd = sd,
               .time = engine.lastTime},
              shape);
}

void drawEyes(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    const EyeShape shape = eyeOnShow(engine);
    const double latitude = wrapped(engine.pitch + restLatitude + engine.roll);
    const double size = (engine.isMini ? miniEyeScale : 1) * frame.R * engine.es;
    // The box is flat, so its eyes hardly foreshorten and sit a little lower.
    const double flatness = 0.7 * engine.morph;
    const double drop = engine.morph > 0 ? frame.ry * 0.14 * engine.morph : 0;
    const auto foreshorten = [flatness](double cosine) {
        const double least = std::max(cosine, leastForeshortening);
        return least + (1 - least) * flatness;
    };

    const QTransform body = painter.transform();
    for (const double sd : {-1, 1}) {
        const double longitude = engine.yaw + sd * eyeLongitude;
        if (std::cos(longitude) * std::cos(latitude) <= horizon)
            continue;
        painter.translate(frame.rx * std::sin(longitude) * std::cos(latitude),
                          drop - frame.ry * std::sin(latitude));
        painter.scale(foreshorten(std::cos(longitude)), foreshorten(std::cos(latitude)));
        drawEyeShape(painter, engine, shape, size * 0.25, size * 0.27, sd);
        painter.setTransform(body);
    }
}

} // namespace tirlo
