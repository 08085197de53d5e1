#include "CompactMiniGrid.h"

#include "core/AppState.h"
#include "core/TaskWords.h"
#include "mascot/MiniBotCanvasView.h"
#include "ui/AccessibleRole.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tirlo {

namespace {

constexpr double cellSide = 12;
constexpr double cellSpacing = 4;
constexpr double gridSide = 2 * cellSide + cellSpacing;
/// A canvas is wider than its cell, which the mascot's body fills.
constexpr double canvasSide = 20;
/// Distance of the grid's middle to the island's right edge.
constexpr double fromRight = 40;
/// Height of an island without room for the grid.
constexpr double roomless = 4;
constexpr double appearSeconds = 0.25;

} // namespace

CompactMiniGrid::CompactMiniGrid(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_presence(context.state.mode == IslandMode::compact ? 1 : 0)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    followTasks();
    m_observers.follow(m_context.state.mode, [this] { followMode(); });
    m_observers.follow(m_context.state.tasks, [this] { followTasks(); });
    m_observers.follow(m_context.state.focusId, [this] { followTasks(); });
}

QList<AgentTask> CompactMiniGrid::others() const
{
    return m_context.state.tasksBeside(m_context.state.focusId);
}

void CompactMiniGrid::placeOn(const QSizeF &island, double left)
{
    m_island = island;
    m_left = left;
    layOut();
}

void CompactMiniGrid::followMode()
{
    const double presence = m_context.state.mode == IslandMode::compact ? 1 : 0;
    m_presence.animateTo(presence,
                         m_context.frames.permitted(TimingCurve::easeInOut(appearSeconds)),
                         m_context.frames.now());
    if (!m_frames.isActive())
        m_frames = m_context.frames.subscribe([this](double time) {
            layOut();
            if (m_presence.isAtRest(time))
                m_frames.reset();
        });
}

/// A mascot stays as long as its task is among them.
void CompactMiniGrid::followTasks()
{
    const QList<AgentTask> tasks = others();
    std::vector<MiniBotCanvasView *> bots;
    for (const AgentTask &task : tasks) {
        MiniBotCanvasView *bot = takeBot(task);
        if (bot)
            bot->setTask(task);
        else
            bot = makeBot(task);
        AccessibleRole::setName(*bot, inWords(task));
        bot->show();
        bots.push_back(bot);
    }
    qDeleteAll(m_bots);
    m_bots = std::move(bots);
    m_tasks = tasks;
    layOut();
}

MiniBotCanvasView *CompactMiniGrid::makeBot(const AgentTask &task)
{
    auto *bot = new MiniBotCanvasView(task, m_context.queue, m_context.frames, this);
    AccessibleRole::set(*bot, QAccessible::Graphic);
    return bot;
}

/// Takes the task's present mascot out of the grid; null without one in its colour.
MiniBotCanvasView *CompactMiniGrid::takeBot(const AgentTask &task)
{
    for (std::size_t i = 0; i < m_bots.size(); ++i) {
        const AgentTask &shown = m_tasks[qsizetype(i)];
        if (shown.id == task.id && shown.color == task.color)
            return std::exchange(m_bots[i], nullptr);
    }
    return nullptr;
}

void CompactMiniGrid::layOut()
{
    const double room = std::clamp((m_island.height() - roomless) / gridSide, 0.0, 1.0);
    const double scale = room * m_presence.valueAt(m_context.frames.now());
    setVisible(scale > 0 && !m_tasks.isEmpty());
    if (scale <= 0)
        return;

    const auto rowCount = double((m_tasks.size() + 1) / 2);
    const double rowsHeight = rowCount * cellSide + (rowCount - 1) * cellSpacing;
    const QPointF firstCell(0, (gridSide - rowsHeight) / 2);

    // Wide enough for the canvases, which reach beyond their cells.
    constexpr double overhang = (canvasSide - cellSide) / 2;
    const double side = (gridSide + 2 * overhang) * scale;
    const QPointF middle(m_left + m_island.width() - fromRight, m_island.height() / 2);
    const QPointF corner = middle - QPointF(side, side) / 2;
    const QRect frame = QRectF(corner, QSizeF(side, side)).toAlignedRect();
    setGeometry(frame);
    for (std::size_t i = 0; i < m_bots.size(); ++i) {
        const QPointF cell
            = firstCell + QPointF(double(i % 2), double(i / 2)) * (cellSide + cellSpacing);
        const QRectF canvas(corner - frame.topLeft() + cell * scale,
                            QSizeF(canvasSide, canvasSide) * scale);
        m_bots[i]->setGeometry(canvas.toRect());
    }
}

} // namespace tirlo
