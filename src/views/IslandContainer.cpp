#include "IslandContainer.h"

#include "BotPlacement.h"
#include "CompactMiniGrid.h"
#include "CountdownBar.h"
#include "IslandContentView.h"
#include "core/AppState.h"
#include "island/IslandConst.h"
#include "island/IslandGeometry.h"
#include "island/IslandMotion.h"
#include "mascot/GreetingCanvasView.h"
#include "ui/Style.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// The mascot fades in over the film's one.
constexpr double appearSeconds = 0.25;
/// The film's mascot is wider for its diameter than the one that takes over.
constexpr double mascotPerFilmDiameter = 20.0 / 17;

} // namespace

IslandContainer::IslandContainer(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_clock(context.frames)
    , m_content(new IslandContentView(context, this))
    , m_greeting(new GreetingCanvasView(context.state, context.notifications, context.sounds,
                                        context.queue, context.frames, this))
    , m_mascot(new BotPlacement(context, this))
    , m_countdown(new CountdownBar(context.state, context.queue, this))
    , m_minis(new CompactMiniGrid(context, this))
    , m_mode(context.state.mode)
{
    m_greeting->hide();
    connect(m_greeting, &GreetingCanvasView::foldEnded, this, &IslandContainer::followFold);
    connect(m_mascot, &BotPlacement::appeared, m_greeting, &QWidget::hide);
    moveTo(IslandGeometry::islandShape(m_state), Animation::none());
    show(IslandGeometry::islandShape(m_state));
    layOutContent();
    m_observers.follow(m_state.mode, [this] { followMode(); });
    m_observers.follow(m_state.view, [this] { followSize(); });
    m_observers.follow(m_state.chatHistory, [this] { followSize(); });
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
    moveTo(IslandGeometry::islandShape(m_state),
           folds ? Animation(IslandMotion::foldEase) : IslandMotion::forChange(old, m_mode));
    layOutContent();
}

void IslandContainer::followSize()
{
    if (m_mode != IslandMode::expanded)
        return;
    moveTo(IslandGeometry::islandShape(m_state), IslandMotion::openSpring);
    layOutContent();
}

void IslandContainer::moveTo(const IslandShape &target, const Animation &animation)
{
    const Animation permitted = m_clock.permitted(animation);
    const double now = m_clock.now();
    m_width.animateTo(target.width, permitted, now);
    m_height.animateTo(target.height, permitted, now);
    m_cornerRadius.animateTo(target.cornerRadius, permitted, now);
    m_topRadius.animateTo(target.topRadius, permitted, now);
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { frame(time); });
}

void IslandContainer::frame(double time)
{
    show({.width = m_width.valueAt(time),
          .height = m_height.valueAt(time),
          .cornerRadius = m_cornerRadius.valueAt(time),
          .topRadius = m_topRadius.valueAt(time)});
    const bool isAtRest = m_width.isAtRest(time) && m_height.isAtRest(time)
        && m_cornerRadius.isAtRest(time) && m_topRadius.isAtRest(time);
    if (isAtRest)
        m_frames.reset();
}

void IslandContainer::show(const IslandShape &shape)
{
    if (shape == m_shape)
        return;
    m_shape = shape;
    resize(2 * int(std::ceil(shape.width / 2)), int(std::ceil(shape.height)));
    m_content->move((width() - m_content->width()) / 2, m_content->y());
    m_mascot->setGeometry(rect());
    clipContent();
    placeGreeting();
    m_countdown->move((width() - m_countdown->width()) / 2, height() - m_countdown->height());
    m_minis->placeOn({shape.width, shape.height}, (width() - shape.width) / 2);
    update();
    Q_EMIT sizeChanged();
}

/// Keeps the content within the outline while that is on its way; at rest it lies within by itself.
void IslandContainer::clipContent()
{
    if (!m_content->isVisible() || m_shape == IslandGeometry::islandShape(m_state))
        m_content->clearMask();
    else
        m_content->setMask(m_shape.region().translated(-m_content->pos()));
}

/// Cards are laid out once, at the size that the island is going to, and uncovered by it.
void IslandContainer::layOutContent()
{
    const bool isExpanded = m_mode == IslandMode::expanded;
    const bool showsGreeting = isExpanded && m_state.view == IslandView::greeting;
    const bool showsContent = isExpanded && !showsGreeting;
    if (showsContent) {
        const IslandShape target = IslandGeometry::islandShape(m_state);
        // Shoulders at the top edge push the content down.
        const int lift = int(std::ceil(std::max(-target.topRadius, 0.0)));
        const int contentWidth = int(target.width);
        m_content->setGeometry((width() - contentWidth) / 2, lift, contentWidth,
                               int(target.height) - lift);
    }
    m_content->setVisible(showsContent);
    clipContent();
    if (showsGreeting)
        showGreeting();
    else
        dropGreeting();
}

/// The film keeps its place around the island's middle, whatever the island's width.
void IslandContainer::placeGreeting()
{
    m_greeting->move((width() - m_greeting->width()) / 2, 0);
    m_greeting->setOutline(m_shape.path().translated((m_greeting->width() - m_shape.width) / 2, 0));
}

void IslandContainer::showGreeting()
{
    // A film that has folded starts anew.
    if (m_greeting->isFolding())
        m_greeting->hide();
    const QSizeF resting = IslandGeometry::islandSize(IslandMode::compact, m_state.view,
                                                      m_state.notchWidth, m_state.notchHeight, 0);
    m_greeting->setResting({.width = resting.width(),
                            .height = resting.height(),
                            .cornerRadius = IslandConst::closedCornerRadius});
    m_mascot->conceal();
    m_greeting->show();
}

/// Ends the film at once, unless it is folding into the compact island.
void IslandContainer::dropGreeting()
{
    const bool folds = m_mode == IslandMode::compact && m_greeting->isFolding();
    if (folds || m_greeting->isHidden())
        return;
    m_mascot->takeOver(greetingMascot(), Animation::none());
    m_greeting->hide();
}

/// Lets the mascot appear over the film's last picture, which then goes.
void IslandContainer::followFold()
{
    if (m_mode == IslandMode::expanded)
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
