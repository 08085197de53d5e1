#include "IslandContainer.h"

#include "BotPlacement.h"
#include "CompactMiniGrid.h"
#include "CountdownBar.h"
#include "IslandContentView.h"
#include "core/AppState.h"
#include "core/IslandConst.h"
#include "core/IslandLayout.h"
#include "island/IslandGeometry.h"
#include "island/IslandMotion.h"
#include "mascot/GreetingCanvasView.h"
#include "ui/PresenceEffect.h"
#include "ui/Style.h"
#include "views/CardSight.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// The mascot fades in over the film's one, which fades out when another card takes its place.
constexpr double appearSeconds = 0.25;
/// An island or a card on a spring is there, but for a hair, long before it is at rest.
constexpr double nearlyThere = 1;
constexpr double wholeOpacity = 0.98;
/// The film's mascot is wider for its diameter than the one that takes over.
constexpr double mascotPerFilmDiameter = 20.0 / 17;

} // namespace

IslandContainer::IslandContainer(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_sight(context.sight)
    , m_clock(context.frames)
    , m_content(new IslandContentView(context, this))
    , m_contentPresence(new PresenceEffect(m_content))
    , m_greeting(new GreetingCanvasView(context.state, context.notifications, context.sounds,
                                        context.queue, context.frames, this))
    , m_greetingPresence(new PresenceEffect(m_greeting))
    , m_mascot(new BotPlacement(context, this))
    , m_countdown(new CountdownBar(context.state, context.queue, this))
    , m_minis(new CompactMiniGrid(context, this))
    , m_mode(context.state.mode)
    , m_chatCount(context.state.chatHistory.value().size())
{
    m_greeting->hide();
    m_content->hide();
    connect(m_greeting, &GreetingCanvasView::foldEnded, this, &IslandContainer::followFold);
    connect(m_mascot, &BotPlacement::appeared, m_greeting, &QWidget::hide);
    moveTo(IslandGeometry::islandShape(m_state), Animation::none());
    show(IslandGeometry::islandShape(m_state));
    showLayer(Animation::none());
    m_observers.follow(m_state.mode, [this] { followMode(); });
    m_observers.follow(m_state.view, [this] { followView(); });
    m_observers.follow(m_state.chatHistory, [this] { followChat(); });
    m_observers.follow(m_state.cardGrowth, [this] { followSize(); });
    m_observers.follow(m_state.notchWidth, [this] { followNotch(); });
    m_observers.follow(m_state.notchHeight, [this] { followNotch(); });
    m_observers.follow(m_state.hasNotch, [this] { followNotch(); });
    connect(m_content, &IslandContentView::cardsMoved, this, &IslandContainer::followSight);
}

void IslandContainer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate((width() - m_shape.width) / 2, 0);
    painter.fillPath(m_shape.path(), Style::island);
}

void IslandContainer::followMode()
{
    const IslandMode old = std::exchange(m_mode, m_state.mode.value());
    const bool folds = m_mode == IslandMode::compact && m_greeting->isFolding();
    const Animation motion
        = folds ? Animation(IslandMotion::foldEase) : IslandMotion::forChange(old, m_mode);
    moveTo(IslandGeometry::islandShape(m_state), motion);
    showLayer(motion);
}

/// What changes on an island that shows no card is there when it opens.
void IslandContainer::followView()
{
    m_sight.moves();
    m_content->showCard(m_state.view, m_contentOpacity.valueAt(m_clock.now()) > 0);
    followSize();
}

/// The prompt grows with the chat.
void IslandContainer::followChat()
{
    const qsizetype count = m_state.chatHistory.value().size();
    if (count != std::exchange(m_chatCount, count) && m_state.view == IslandView::prompt)
        followSize();
}

void IslandContainer::followSize()
{
    if (m_mode != IslandMode::expanded)
        return;
    moveTo(IslandGeometry::islandShape(m_state), IslandMotion::openSpring);
    showLayer(IslandMotion::openSpring);
}

/// Another screen, or the same one with something else at its top.
void IslandContainer::followNotch()
{
    moveTo(IslandGeometry::islandShape(m_state), Animation::none());
    if (!m_greeting->isHidden())
        m_greeting->setResting(restingLayout());
}

void IslandContainer::moveTo(const IslandShape &target, const Animation &animation)
{
    const Animation permitted = m_clock.permitted(animation);
    const double now = m_clock.now();
    m_width.animateTo(target.width, permitted, now);
    m_height.animateTo(target.height, permitted, now);
    m_cornerRadius.animateTo(target.cornerRadius, permitted, now);
    m_topRadius.animateTo(target.topRadius, permitted, now);
    run();
}

void IslandContainer::run()
{
    m_sight.moves();
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { frame(time); });
}

void IslandContainer::frame(double time)
{
    show({.width = m_width.valueAt(time),
          .height = m_height.valueAt(time),
          .cornerRadius = m_cornerRadius.valueAt(time),
          .topRadius = m_topRadius.valueAt(time)});
    showContentAt(time);
    m_greetingPresence->setPresence(m_greetingOpacity.valueAt(time), 1);
    followSight();
    const bool isAtRest = m_width.isAtRest(time) && m_height.isAtRest(time)
        && m_cornerRadius.isAtRest(time) && m_topRadius.isAtRest(time)
        && m_contentOpacity.isAtRest(time) && m_greetingOpacity.isAtRest(time);
    if (!isAtRest)
        return;
    m_frames.reset();
    if (m_contentOpacity.target() > 0)
        layOutContent();
}

/// The card is in sight once all of it is there, and the island around it.
void IslandContainer::followSight()
{
    const double time = m_clock.now();
    const bool isUncovered = m_width.valueAt(time) >= m_width.target() - nearlyThere
        && m_height.valueAt(time) >= m_height.target() - nearlyThere;
    const bool isShown = m_mode == IslandMode::expanded && m_contentOpacity.target() > 0
        && m_contentOpacity.valueAt(time) >= wholeOpacity;
    if (isShown && isUncovered && m_content->isCardWhole())
        m_sight.arrived();
}

void IslandContainer::show(const IslandShape &shape)
{
    if (shape == m_shape)
        return;
    const double covered = std::max(shape.height, m_shape.height);
    m_shape = shape;
    // The mascot has all the panel's height to move in while the island is open.
    const int height = m_mode == IslandMode::expanded ? IslandConst::panelHeight : islandHeight();
    resize(2 * int(std::ceil(shape.width / 2)), height);
    m_content->move((width() - m_content->width()) / 2, m_content->y());
    m_mascot->setGeometry(rect());
    placeGreeting();
    m_countdown->move((width() - m_countdown->width()) / 2, islandHeight() - m_countdown->height());
    m_minis->placeOn({shape.width, shape.height}, (width() - shape.width) / 2);
    update(0, 0, width(), int(std::ceil(covered)));
    Q_EMIT sizeChanged();
}

/// In whole points, as much as the outline reaches into.
int IslandContainer::islandHeight() const
{
    return int(std::ceil(m_shape.height));
}

/// Keeps the content within an outline that is smaller; in one of its own size it lies by itself.
void IslandContainer::clipContent()
{
    const QRect content = m_content->geometry();
    const bool isCovered = m_content->isVisible()
        && (m_shape.width < content.width() || m_shape.height < content.bottom() + 1);
    const QPointF corner((width() - m_shape.width) / 2, 0);
    m_contentPresence->setOutline(isCovered ? m_shape.path().translated(corner - content.topLeft())
                                            : QPainterPath());
}

/// Chooses what lies on the island: the film, the content, or nothing while it is closed.
void IslandContainer::showLayer(const Animation &animation)
{
    const bool isExpanded = m_mode == IslandMode::expanded;
    const bool showsGreeting = isExpanded && m_state.view == IslandView::greeting;
    const bool showsContent = isExpanded && !showsGreeting;
    if (showsContent)
        layOutContent();
    m_content->setAttribute(Qt::WA_TransparentForMouseEvents, !showsContent);
    m_contentOpacity.animateTo(showsContent, m_clock.permitted(animation), m_clock.now());
    showContentAt(m_clock.now());
    run();
    if (showsGreeting)
        showGreeting();
    else
        dropGreeting();
}

/// Cards are laid out once, at the size that the island is going to, and uncovered by it.
void IslandContainer::layOutContent()
{
    const IslandShape target = IslandGeometry::islandShape(m_state);
    // Shoulders at the top edge push the content down.
    const int lift = int(std::ceil(std::max(-target.topRadius, 0.0)));
    const int contentWidth = int(target.width);
    // A card that goes is not cut while a higher island still shrinks around it.
    const int contentHeight = std::max(int(target.height), islandHeight());
    m_content->setGeometry((width() - contentWidth) / 2, lift, contentWidth, contentHeight - lift);
    m_content->setIslandHeight(int(target.height) - lift);
}

void IslandContainer::showContentAt(double time)
{
    const double opacity = m_contentOpacity.valueAt(time);
    m_contentPresence->setPresence(opacity, 1);
    m_content->setVisible(opacity > 0 || m_contentOpacity.target() > 0);
    clipContent();
}

/// The film keeps its place around the island's middle, whatever the island's width.
void IslandContainer::placeGreeting()
{
    m_greeting->move((width() - m_greeting->width()) / 2, 0);
    m_greeting->setOutline(m_shape.path().translated((m_greeting->width() - m_shape.width) / 2, 0));
}

void IslandContainer::showGreeting()
{
    // A film that has folded, or faded, starts anew.
    if (m_greeting->isFolding() || m_greetingOpacity.target() == 0)
        m_greeting->hide();
    m_greeting->setResting(restingLayout());
    m_mascot->conceal(TimingCurve::easeInOut(appearSeconds));
    m_greetingOpacity.jumpTo(1);
    m_greetingPresence->setPresence(1, 1);
    m_greeting->show();
}

/// What the film ends in.
IslandRestingLayout IslandContainer::restingLayout() const
{
    const QSizeF resting = IslandLayout::islandSize(IslandMode::compact, m_state.view,
                                                    m_state.notchWidth, m_state.notchHeight, 0);
    return {.width = resting.width(),
            .height = resting.height(),
            .cornerRadius = IslandConst::closedCornerRadius};
}

/// Ends the film, unless it is folding into the compact island: it fades over what took its place.
void IslandContainer::dropGreeting()
{
    const bool folds = m_mode == IslandMode::compact && m_greeting->isFolding();
    if (folds || m_greeting->isHidden() || m_greetingOpacity.target() == 0)
        return;
    const Animation fade = TimingCurve::easeInOut(appearSeconds);
    m_greeting->giveWay();
    m_greetingOpacity.animateTo(0, m_clock.permitted(fade), m_clock.now());
    m_mascot->takeOver(greetingMascot(), fade);
    run();
}

/// Lets the mascot appear over the film's last picture, which then goes.
void IslandContainer::followFold()
{
    if (m_mode == IslandMode::expanded || m_greetingOpacity.target() == 0)
        return;
    if (!m_greeting->isFolding())
        return dropGreeting();
    m_mascot->takeOver(greetingMascot(), TimingCurve::easeInOut(appearSeconds));
}

MascotPlace IslandContainer::greetingMascot() const
{
    const GreetPose pose = m_greeting->presentPose();
    return {.centre = {m_greeting->x() + pose.x, pose.y},
            .diameter = pose.d * mascotPerFilmDiameter};
}

} // namespace tirlo
