#include "TextLine.h"

#include "Style.h"
#include "core/HiddenMarks.h"

#include <QCache>
#include <QFontMetricsF>
#include <QPainter>
#include <QPalette>
#include <QTextLayout>
#include <QToolTip>

#include <cmath>

namespace tirlo::TextLine {

namespace {

/// More code units than any line of the island can show at either end.
constexpr qsizetype longestEnd = 400;
constexpr qsizetype longestToolTipEnd = 1000;
constexpr qsizetype longestUnwrapped = 80;

/// Lines on the island that are drawn again and again, and as many that come and go.
constexpr int keptLines = 64;
/// Wider than any line that is laid out.
constexpr double unbounded = 1e5;

struct ShapedKey
{
    QString line;
    QFont font;
    Qt::TextElideMode mode;
    double width;

    bool operator==(const ShapedKey &) const = default;
};

std::size_t qHash(const ShapedKey &key, std::size_t seed)
{
    return qHashMulti(seed, key.line, key.font, int(key.mode), key.width);
}

Shaped shaped(const QString &line, const QFont &font)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(QTextOption::NoWrap);
    QTextLayout layout(line, font);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    QTextLine row = layout.createLine();
    if (!row.isValid())
        return {};
    row.setLineWidth(unbounded);
    row.setPosition({0, -row.ascent()});
    layout.endLayout();
    return {row.glyphRuns(), row.horizontalAdvance(), QFontMetricsF(font).capHeight()};
}

QString bothEnds(const QString &text, qsizetype length)
{
    if (text.size() <= 2 * length)
        return text;
    qsizetype head = length;
    qsizetype tail = text.size() - length;
    // Never between the halves of a surrogate pair.
    if (text[head].isLowSurrogate())
        --head;
    if (text[tail].isLowSurrogate())
        ++tail;
    return text.first(head) + u'…' + text.sliced(tail);
}

} // namespace

QString displayable(const QString &text)
{
    return lineWithoutHiddenMarks(bothEnds(text, longestEnd));
}

QString elided(const QString &line, const QFontMetricsF &metrics, Qt::TextElideMode mode,
               double width)
{
    // A width that fits exactly must not lose a letter to rounding.
    return metrics.elidedText(line, mode, std::ceil(width) + 0.01);
}

const Shaped &fitted(const QString &line, const QFont &font, Qt::TextElideMode mode, double width)
{
    // Never destroyed, for fonts can no longer be let go of once the application is gone.
    static auto &kept = *new QCache<ShapedKey, Shaped>(keptLines);
    const ShapedKey key{line, font, mode, width};
    if (const Shaped *present = kept.object(key))
        return *present;
    auto *made = new Shaped(shaped(elided(line, QFontMetricsF(font), mode, width), font));
    kept.insert(key, made);
    return *made;
}

void draw(QPainter &painter, const QRectF &rect, const Shaped &line)
{
    const double ratio = painter.device()->devicePixelRatio();
    const double baseline = rect.center().y() + line.capHeight / 2;
    const QPointF origin(rect.left(), std::round(baseline * ratio) / ratio);
    for (const QGlyphRun &run : line.glyphs)
        painter.drawGlyphRun(origin, run);
}

void draw(QPainter &painter, const QRectF &rect, const QString &line)
{
    draw(painter, rect, fitted(line, painter.font(), Qt::ElideNone, rect.width()));
}

void showToolTip(const QPoint &position, const QString &text, QWidget *owner)
{
    const QString shown = withoutHiddenMarks(bothEnds(text, longestToolTipEnd));

    // The style draws the tip's edge in the text's colour, so the text brings its own.
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::ToolTipBase, Style::card);
    palette.setColor(QPalette::ToolTipText, Style::spentMark);
    QToolTip::setPalette(palette);
    QToolTip::setFont(Style::font(Style::headSize));

    // Escaped and marked as rich text, since a tool tip would guess otherwise.
    const bool mayWrap = shown.size() > longestUnwrapped;
    QToolTip::showText(position,
                       QStringLiteral("<div style=\"color:%1;white-space:%2\">%3</div>")
                           .arg(Style::primaryText.name(),
                                mayWrap ? QLatin1String("pre-wrap") : QLatin1String("pre"),
                                shown.toHtmlEscaped()),
                       owner);
}

} // namespace tirlo::TextLine
