#include "BotGlyph.h"

#include "PainterScope.h"
#include "ui/Style.h"

#include <QHash>
#include <QPainterPath>

namespace tirlo {

namespace {

/// Large enough for an outline without hinting to matter.
constexpr int outlineSize = 128;

/// The character's outline at `outlineSize`, its ink centred on the origin.
QPainterPath outlineOf(QChar character, QFont::Weight weight)
{
    QFont font = Style::font(outlineSize, weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainterPath path;
    path.addText(QPointF(), font, QString(character));
    return path.translated(-path.boundingRect().center());
}

/// Few different characters are ever drawn, so their outlines are kept.
const QPainterPath &keptOutline(QChar character, QFont::Weight weight)
{
    static QHash<std::pair<QChar, int>, QPainterPath> kept;
    const auto found = kept.constFind({character, weight});
    if (found != kept.constEnd())
        return *found;
    return *kept.insert({character, weight}, outlineOf(character, weight));
}

} // namespace

void drawGlyph(QPainter &painter, QChar character, QFont::Weight weight, QPointF center,
               double size, const QColor &color)
{
    const PainterScope scope(painter);
    painter.translate(center);
    painter.scale(size / outlineSize, size / outlineSize);
    painter.fillPath(keptOutline(character, weight), color);
}

} // namespace tirlo
