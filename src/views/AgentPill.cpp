#include "AgentPill.h"

#include "PillBadgeView.h"
#include "mascot/MiniBotCanvasView.h"
#include "ui/Color.h"
#include "ui/FocusRing.h"
#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>

namespace tirlo {

namespace {

constexpr int outset = 6;
constexpr double botFrame = 22;
constexpr double botLeft = 3;
/// The canvas is wider than the mascot's frame: what it throws flies out of it.
constexpr int botCanvas = 36;
/// The mascot is wider than its frame, and the name stands clear of it.
constexpr double nameGap = 3;
constexpr double nameRight = 4;
constexpr QPointF badgeOffset{-4, 2};
constexpr double hoveredScale = 1.04;
constexpr double hoveredBrightness = 0.06;
constexpr double shadowOpacity = 0.28;

const QString editorPillId = QStringLiteral("integration_claude");

QString shownName(const AgentTask &task)
{
    return task.id == editorPillId ? QStringLiteral("VS Code") : task.name;
}

QString badgeDescription(const std::optional<PillBadge> &badge)
{
    if (!badge)
        return {};
    switch (*badge) {
    case PillBadge::approval:
        return QStringLiteral("needs permission");
    case PillBadge::finished:
        return QStringLiteral("finished");
    case PillBadge::error:
        return QStringLiteral("failed");
    }
    return {};
}

struct PillColors
{
    QColor fill;
    QColor stroke;
    QColor name;
};

PillColors restColors(const QColor &task)
{
    return {.fill = Style::pill, .stroke = withOpacity(task, 0.14), .name = Style::faintText};
}

PillColors hoveredColors(const QColor &task)
{
    const QColor bright = lighter(task, hoveredBrightness);
    return {.fill = withOpacity(bright, 0.18),
            .stroke = withOpacity(bright, 0.55),
            .name = lighter(bright, 0.3)};
}

} // namespace

AgentPill::AgentPill(const ViewContext &context, QWidget *parent)
    : QAbstractButton(parent)
    , m_context(context)
{
    setFont(Style::font(Style::pillSize, QFont::DemiBold));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

QRect AgentPill::frameAround(const QRect &capsule)
{
    return capsule.adjusted(-outset, -outset, outset, outset);
}

void AgentPill::setTask(const AgentTask &task)
{
    const QString name = shownName(task);
    const bool looksTheSame = name == shownName(m_task) && task.color == m_task.color
        && task.pillBadge == m_task.pillBadge;
    const bool isSameCharacter = m_bot && task.id == m_task.id && task.color == m_task.color;
    m_task = task;
    if (isSameCharacter)
        m_bot->setTask(task);
    else
        makeBot();
    if (looksTheSame)
        return;
    m_name = TextLine::displayable(name);
    setAccessibleName(name);
    setAccessibleDescription(badgeDescription(task.pillBadge));
    update();
}

bool AgentPill::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
        update();
        break;
    case QEvent::ToolTip:
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), shownName(m_task),
                              this);
        return true;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void AgentPill::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor taskColor = colorFromHex(m_task.color);
    const bool isHovered = underMouse();
    const PillColors colors = isHovered ? hoveredColors(taskColor) : restColors(taskColor);
    if (isHovered && !isDown()) {
        const QPointF centre = capsule().center();
        painter.translate(centre);
        painter.scale(hoveredScale, hoveredScale);
        painter.translate(-centre);
    }

    constexpr double radius = capsuleHeight / 2.0;
    constexpr double half = Style::hairlineWidth / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Qt::black, shadowOpacity));
    painter.drawRoundedRect(capsule().translated(0, 1), radius, radius);
    painter.setBrush(Style::pill);
    painter.drawRoundedRect(capsule(), radius, radius);
    painter.setBrush(colors.fill);
    painter.setPen(FocusRing::isShown(*this) ? QPen(Style::focusRing, Style::focusRingWidth)
                                             : QPen(colors.stroke, Style::hairlineWidth));
    painter.drawRoundedRect(capsule().adjusted(half, half, -half, -half), radius - half,
                            radius - half);

    const QRectF nameRect = capsule().adjusted(botLeft + botFrame + nameGap, 0, -nameRight, 0);
    const QFontMetricsF metrics(font(), this);
    painter.setFont(font());
    painter.setPen(colors.name);
    TextLine::draw(painter, nameRect,
                   TextLine::elided(m_name, metrics, Qt::ElideRight, nameRect.width()));

    if (m_task.pillBadge)
        PillBadgeView::draw(painter, capsule().topRight() + badgeOffset, *m_task.pillBadge,
                            taskColor);
}

void AgentPill::resizeEvent(QResizeEvent *)
{
    placeBot();
}

/// Each task has a character of its own, in its own colour.
void AgentPill::makeBot()
{
    delete m_bot;
    m_bot = new MiniBotCanvasView(m_task, m_context.queue, m_context.frames, this);
    m_bot->setFixedSize(botCanvas, botCanvas);
    placeBot();
    m_bot->show();
}

void AgentPill::placeBot()
{
    if (!m_bot)
        return;
    const QPointF centre(capsule().left() + botLeft + botFrame / 2, capsule().center().y());
    m_bot->move((centre - QPointF(botCanvas, botCanvas) / 2).toPoint());
}

bool AgentPill::hitButton(const QPoint &position) const
{
    return capsule().contains(position);
}

QRectF AgentPill::capsule() const
{
    return QRectF(rect()).adjusted(outset, outset, -outset, -outset);
}

} // namespace tirlo
