#include "GreetingSheets.h"

#include "mascot/GreetDrawing.h"
#include "mascot/GreetPose.h"
#include "ui/Style.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tirlo {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};
constexpr double openCornerRadius = 22;
constexpr double frameRate = 25;

const QColor wallpaper(0x4A, 0x5F, 0x86);
const GreetCast cast{.body = std::nullopt,
                     .minis = {{0.176, 0.831, 0.749}, {0.91, 0.475, 0.976}, {0.545, 0.706, 0.973}}};

/// The island's outline around the middle of the film's frame: square above, round below.
QPainterPath outlineOf(const GreetPose &pose)
{
    const double share
        = std::clamp((pose.h - notched.height) / (greetFrame.height() - notched.height), 0.0, 1.0);
    const double radius = notched.cornerRadius + (openCornerRadius - notched.cornerRadius) * share;
    const QRectF island((greetFrame.width() - pose.w) / 2, -radius, pose.w, pose.h + radius);
    QPainterPath path;
    path.addRoundedRect(island, radius, radius);
    return path;
}

void paintMoment(QPainter &painter, double t, double tc)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(QPointF(), greetFrame), wallpaper);
    painter.setClipRect(QRectF(QPointF(), greetFrame));
    const QPainterPath outline = outlineOf(pose(t, tc, notched));
    painter.fillPath(outline, Style::island);
    painter.setClipPath(outline, Qt::IntersectClip);
    drawGreeting(painter, greetFrame, t, tc, notched, cast);
}

void addMoment(Sheet &sheet, double t, double tc = never)
{
    const QString time = QString::number(t, 'f', 2);
    const QString end = std::isfinite(tc) ? QStringLiteral(", told at %1").arg(tc) : QString();
    sheet.add(time + end, [t, tc](QPainter &painter) { paintMoment(painter, t, tc); });
}

} // namespace

Sheet greetingSheet()
{
    Sheet sheet(QStringLiteral("greeting"), greetFrame.toSize(), 3);
    for (const double t : {0.05, 0.1, 0.15, 0.25, 0.3, 0.35})
        addMoment(sheet, t);
    for (int i = 2; i <= 23; ++i)
        addMoment(sheet, 0.2 * i);
    return sheet;
}

Sheet foldedGreetingSheet()
{
    Sheet sheet(QStringLiteral("greeting-folded"), greetFrame.toSize(), 3);
    for (const double tc : {0.3, 2.0, 5.25}) {
        for (int i = 0; i <= 8; ++i)
            addMoment(sheet, tc + i * greetFoldTime / 8, tc);
    }
    return sheet;
}

bool writeGreetingFrames(const QDir &directory)
{
    constexpr double toldToFold = 5;
    constexpr double length = 5.8;
    if (!directory.mkpath(QStringLiteral(".")))
        return false;
    for (int i = 0; i < length * frameRate; ++i) {
        QImage image(greetFrame.toSize(), QImage::Format_RGB32);
        QPainter painter(&image);
        paintMoment(painter, i / frameRate, toldToFold);
        painter.end();
        const QString name = QStringLiteral("%1.png").arg(i, 3, 10, QLatin1Char('0'));
        if (!image.save(directory.filePath(name)))
            return false;
    }
    return true;
}

} // namespace tirlo
