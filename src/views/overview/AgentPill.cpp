#include "AgentPill.h"

#include "PillBadgeView.h"
#include "core/AgentCatalog.h"
#include "core/TaskWords.h"
#include "mascot/MiniBotCanvasView.h"
#include "ui/Bands.h"
#include "ui/Color.h"
#include "ui/FocusRing.h"
#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QHelpEvent>
#include <QHoverEvent>
#include <QPainter>
#include <QPaintEvent>

#include <algorithm>
#include <span>
#include <utility>

namespace tirlo {

namespace {

/// Room around the capsule for growth, shadow and badge. On the left it ends where the neighbour's
/// capsule does, or a press there would be nobody's.
constexpr int outset = 6;
constexpr int leftOutset = 2;
constexpr double botFrame = 22;
constexpr double botLeft = 3;
/// The canvas is wider than the mascot's frame, which the body fills.
constexpr double botCanvas = botFrame / 0.6;
/// The canvas's widget, in whole points.
constexpr int botWidget = 40;
/// The mascot is wider than its frame, and the name stands clear of it.
constexpr double nameGap = 3;
constexpr double nameRight = 4;
constexpr QPointF badgeOffset{-4, 2};
constexpr double shadowOpacity = 0.28;

constexpr Spring hoverSpring{.response = 0.2, .dampingFraction = 0.7};
constexpr double hoveredGrowth = 0.04;
constexpr double hoveredBrightness = 0.06;
constexpr double hoveredFill = 0.18;
constexpr double restStroke = 0.14;
constexpr double hoveredStroke = 0.55;
constexpr double hoveredNameLight = 0.3;
/// How far the pill stays raised while it is pressed.
constexpr double pressedHover = 0.5;

QString shownName(const AgentTask &task)
{
    // The editor's own name, whatever the project in it.
    const PillDefinition &editor = AgentCatalog::definition(AgentId::claudeCode).pill;
    return task.id == editor.id ? editor.name : task.name;
}

/// Adds the amount, 0 to 1, to every colour of the picture.
void brighten(QImage &picture, double amount)
{
    if (amount <= 0)
        return;
    for (int y = 0; y < picture.height(); ++y) {
        for (QRgb &pixel : std::span(reinterpret_cast<QRgb *>(picture.scanLine(y)),
                                     std::size_t(picture.width()))) {
            const int alpha = qAlpha(pixel);
            const int added = qRound(amount * alpha);
            pixel = qRgba(std::min(qRed(pixel) + added, alpha),
                          std::min(qGreen(pixel) + added, alpha),
                          std::min(qBlue(pixel) + added, alpha), alpha);
        }
    }
}

/// What the badge says, and without one how the task is.
QString description(const AgentTask &task)
{
    if (!task.pillBadge)
        return inWords(task.state);
    switch (*task.pillBadge) {
    case PillBadge::approval:
        return QStringLiteral("waits for you");
    case PillBadge::finished:
        return QStringLiteral("finished");
    case PillBadge::error:
        return QStringLiteral("failed");
    }
    return {};
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
    connect(this, &AgentPill::pressed, this, &AgentPill::followHover);
    connect(this, &AgentPill::released, this, &AgentPill::followHover);
}

QRect AgentPill::frameAround(const QRect &capsule)
{
    return capsule.adjusted(-leftOutset, -outset, outset, outset);
}

void AgentPill::setTask(const AgentTask &task)
{
    const QString name = shownName(task);
    const bool isNew = !m_bot;
    const bool looksTheSame = name == shownName(m_task) && task.color == m_task.color
        && task.pillBadge == m_task.pillBadge;
    const bool isDescribed = !isNew && description(task) == description(m_task);
    const bool isSameCharacter = m_bot && task.id == m_task.id && task.color == m_task.color;
    m_task = task;
    if (isSameCharacter)
        m_bot->setTask(task);
    else
        makeBot();
    if (!isDescribed)
        setAccessibleDescription(description(task));
    if (looksTheSame && !isNew)
        return;
    m_name = TextLine::displayable(name);
    setAccessibleName(name.isEmpty() ? QStringLiteral("Agent") : name);
    update();
}

void AgentPill::setPresence(double opacity, double scale)
{
    if (opacity == m_opacity && scale == m_presenceScale)
        return;
    m_opacity = opacity;
    m_presenceScale = scale;
    dressBot();
    update();
}

bool AgentPill::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave: {
        const QPointF position = static_cast<QHoverEvent *>(event)->position();
        const bool isHovered = event->type() != QEvent::HoverLeave && capsule().contains(position);
        if (isHovered != std::exchange(m_isHovered, isHovered))
            followHover();
        break;
    }
    case QEvent::ToolTip:
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), shownName(m_task),
                              this);
        return true;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void AgentPill::followHover()
{
    const double now = m_context.frames.now();
    const double target = !m_isHovered ? 0 : isDown() ? pressedHover : 1;
    m_hoverMotion.animateTo(target, m_context.frames.permitted(hoverSpring), now);
    showHover(now);
    if (!m_hoverMotion.isAtRest(now) && !m_frames.isActive())
        m_frames = m_context.frames.subscribe([this](double time) { showHover(time); });
}

void AgentPill::showHover(double time)
{
    m_hover = m_hoverMotion.valueAt(time);
    dressBot();
    update();
    if (m_hoverMotion.isAtRest(time))
        m_frames.reset();
}

void AgentPill::hideEvent(QHideEvent *event)
{
    m_isHovered = false;
    m_hoverMotion.jumpTo(0);
    showHover(m_context.frames.now());
    m_picture = {};
    QAbstractButton::hideEvent(event);
}

void AgentPill::paintEvent(QPaintEvent *event)
{
    // The mascot in the pill moves and has the pill painted again and again.
    const Look look{m_task.color, m_name,  m_task.pillBadge,
                    scale(),      m_hover, FocusRing::isShown(*this)};
    QPainter painter(this);
    const double ratio = painter.deviceTransform().m11();
    const QSize size = (QSizeF(this->size()) * ratio).toSize();
    if (m_picture.size() != size || look != m_look) {
        m_look = look;
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        paintPicture(picture);
        brighten(picture, hoveredBrightness * m_hover);
        m_picture = QPixmap::fromImage(picture);
    }
    painter.setOpacity(m_opacity);
    drawInBands(painter, event->region(), m_picture);
}

void AgentPill::paintPicture(QImage &picture) const
{
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = capsule().center();
    painter.translate(centre);
    painter.scale(scale(), scale());
    painter.translate(-centre);

    const QColor taskColor = colorFromHex(m_task.color);
    drawCapsule(painter, taskColor);
    drawName(painter, taskColor);
    if (m_task.pillBadge)
        PillBadgeView::draw(painter, capsule().topRight() + badgeOffset, *m_task.pillBadge,
                            taskColor);
}

void AgentPill::drawCapsule(QPainter &painter, const QColor &taskColor) const
{
    constexpr double radius = capsuleHeight / 2.0;
    constexpr double half = Style::hairlineWidth / 2;
    const double stroke = restStroke + (hoveredStroke - restStroke) * m_hover;
    const QColor fill = mixed(Style::pill, withOpacity(taskColor, hoveredFill), m_hover);

    // What lets light through casts the less of a shadow.
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Qt::black, shadowOpacity * fill.alphaF()));
    painter.drawRoundedRect(capsule().translated(0, 1), radius, radius);
    painter.setBrush(fill);
    painter.drawRoundedRect(capsule(), radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(FocusRing::isShown(*this)
                       ? QPen(Style::focusRing, Style::focusRingWidth)
                       : QPen(withOpacity(taskColor, stroke), Style::hairlineWidth));
    painter.drawRoundedRect(capsule().adjusted(half, half, -half, -half), radius - half,
                            radius - half);
}

void AgentPill::drawName(QPainter &painter, const QColor &taskColor) const
{
    const QRectF nameRect = capsule().adjusted(botLeft + botFrame + nameGap, 0, -nameRight, 0);
    painter.setPen(mixed(Style::faintText, lighter(taskColor, hoveredNameLight), m_hover));
    TextLine::draw(painter, nameRect,
                   TextLine::fitted(m_name, font(), Qt::ElideRight, nameRect.width()));
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
    m_bot->setFixedSize(botWidget, botWidget);
    dressBot();
    placeBot();
    m_bot->show();
}

/// The mascot is a widget of its own and has to be told what the rest of the pill looks like.
void AgentPill::dressBot()
{
    if (!m_bot)
        return;
    m_bot->setOpacity(m_opacity);
    m_bot->setMagnification(botCanvas / botWidget * scale());
    m_bot->setBrightness(hoveredBrightness * m_hover);
    placeBot();
}

void AgentPill::placeBot()
{
    if (!m_bot)
        return;
    const QPointF middle = capsule().center();
    const QPointF atRest(capsule().left() + botLeft + botFrame / 2, middle.y());
    const QPointF centre = middle + (atRest - middle) * scale();
    m_bot->move((centre - QPointF(botWidget, botWidget) / 2).toPoint());
}

bool AgentPill::hitButton(const QPoint &position) const
{
    return capsule().contains(position);
}

QRectF AgentPill::capsule() const
{
    return QRectF(rect()).adjusted(leftOutset, outset, -outset, -outset);
}

double AgentPill::scale() const
{
    return m_presenceScale * (1 + hoveredGrowth * m_hover);
}

} // namespace tirlo
