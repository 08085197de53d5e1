#include "TickerRowView.h"

#include "TickerShimmerText.h"
#include "ui/Icon.h"
#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QPainter>

#include <algorithm>

namespace tirlo::TickerRowView {

namespace {

constexpr double markWidth = 7;
constexpr double markSpacing = 6;
constexpr double chevronSize = 9;
constexpr double checkmarkSize = 8;

double unit(double value)
{
    return std::clamp(value, 0.0, 1.0);
}

bool isStep(const QString &text)
{
    return !text.isEmpty() && text != placeholder;
}

void drawMark(QPainter &painter, const QRectF &row, const char *icon, double size,
              const QColor &color)
{
    const QRectF square(row.left() + (markWidth - size) / 2, row.center().y() - size / 2, size,
                        size);
    Icon::draw(painter, QLatin1String(icon), square, color);
}

void drawPlain(QPainter &painter, const QRectF &rect, const QString &text, const QColor &color)
{
    painter.setPen(color);
    TextLine::draw(painter, rect,
                   TextLine::fitted(text, painter.font(), Qt::ElideRight, rect.width()));
}

} // namespace

void draw(QPainter &painter, const QRectF &row, const Texts &texts, double phase,
          std::optional<double> shimmerTime)
{
    const double opacity = painter.opacity();
    const QRectF textRect = row.adjusted(markWidth + markSpacing, 0, 0, 0);
    // True when there is anything to see of a part at that share of the row's opacity.
    const auto setShare = [&](double share) {
        painter.setOpacity(opacity * share);
        return painter.opacity() > 0;
    };

    if (!texts.live.isEmpty()) {
        if (setShare(unit(1 - 2 * phase)))
            drawMark(painter, row, "chevron-right", chevronSize, Style::secondaryText);
        if (setShare(unit(1 - 1.6 * phase))) {
            if (shimmerTime && isStep(texts.live))
                TickerShimmerText::draw(painter, textRect, texts.live, *shimmerTime);
            else
                drawPlain(painter, textRect, texts.live,
                          isStep(texts.live) ? Style::liveText : Style::shimmerText);
        }
    }
    if (isStep(texts.spent) && setShare(unit(2 * phase - 1)))
        drawMark(painter, row, "checkmark", checkmarkSize, Style::spentMark);
    if (setShare(unit(2 * phase - 0.4)))
        drawPlain(painter, textRect, texts.spent, Style::faintText);
    painter.setOpacity(opacity);
}

} // namespace tirlo::TickerRowView
