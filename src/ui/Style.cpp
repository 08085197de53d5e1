#include "Style.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace tirlo::Style {

namespace {

void setSize(QFont &font, double size)
{
    if (size == std::floor(size)) {
        font.setPixelSize(int(size));
        return;
    }
    // Only a size in typographic points may have a fraction.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double pixelsPerInch = screen ? screen->logicalDotsPerInchY() : 96;
    font.setPointSizeF(size * 72 / pixelsPerInch);
}

} // namespace

QFont font(double size, QFont::Weight weight)
{
    QFont font;
    font.setFamilies(
        {QStringLiteral("Inter"), QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()});
    font.setWeight(weight);
    setSize(font, size);
    return font;
}

QFont codeFont(double size)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setSize(font, size);
    return font;
}

} // namespace tirlo::Style
