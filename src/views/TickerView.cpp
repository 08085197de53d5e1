#include "TickerView.h"

#include "ui/Icon.h"
#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int rowHeight = 22;
constexpr int tickerHeight = 2 * rowHeight;
constexpr double markWidth = 7;
constexpr double markSpacing = 6;
constexpr double chevronSize = 9;
constexpr double checkmarkSize = 8;
const QString placeholder = QStringLiteral("…");

struct Mark
{
    QLatin1String icon;
    double size;
    QColor color;
};

const Mark chevron{QLatin1String("chevron-right"), chevronSize, Style::secondaryText};
const Mark checkmark{QLatin1String("checkmark"), checkmarkSize, Style::spentMark};

void drawRow(QPainter &painter, const QRectF &row, const QString &text, const Mark &mark,
             const QColor &color)
{
    if (text.isEmpty())
        return;
    const QRectF markRect(row.left() + (markWidth - mark.size) / 2,
                          row.center().y() - mark.size / 2, mark.size, mark.size);
    if (text != placeholder)
        Icon::draw(painter, mark.icon, markRect, mark.color);

    const QRectF textRect = row.adjusted(markWidth + markSpacing, 0, 0, 0);
    const QFontMetricsF metrics(painter.font(), painter.device());
    painter.setPen(color);
    TextLine::draw(painter, textRect,
                   TextLine::elided(text, metrics, Qt::ElideRight, textRect.width()));
}

} // namespace

TickerView::TickerView(QWidget *parent)
    : QWidget(parent)
    , m_rows(rowsOf(std::nullopt))
{
    setFont(Style::font(Style::bodySize, QFont::Medium));
    setFixedHeight(tickerHeight);
}

void TickerView::setTask(const std::optional<AgentTask> &task)
{
    const Rows rows = rowsOf(task);
    if (rows == m_rows)
        return;
    m_rows = rows;
    setAccessibleName(rows.live);
    update();
}

TickerView::Rows TickerView::rowsOf(const std::optional<AgentTask> &task)
{
    if (!task || task->steps.isEmpty())
        return {.spent = placeholder, .live = {}};
    const qsizetype index = std::clamp<qsizetype>(task->stepIndex, 0, task->steps.size() - 1);
    return {.spent = index == 0 ? placeholder : TextLine::displayable(task->steps[index - 1]),
            .live = TextLine::displayable(task->steps[index])};
}

void TickerView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(font());
    const QRectF first(0, 0, width(), rowHeight);
    drawRow(painter, first, m_rows.spent, checkmark, Style::faintText);
    drawRow(painter, first.translated(0, rowHeight), m_rows.live, chevron, Style::liveText);
}

} // namespace tirlo
