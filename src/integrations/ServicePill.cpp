#include "ServicePill.h"

#include "PollerContext.h"
#include "core/AppState.h"
#include "core/SoundEngine.h"
#include "platform/MainQueue.h"

#include <utility>

namespace tirlo {

namespace {

/// Seconds that an event stays on the pill.
constexpr double settleDelay = 60;

} // namespace

ServicePill::ServicePill(const PollerContext &context, QString id, QList<BotState> outcomes)
    : m_context(context)
    , m_id(std::move(id))
    , m_outcomes(std::move(outcomes))
{
}

bool ServicePill::exists() const
{
    return m_context.state.task(m_id).has_value();
}

bool ServicePill::show(BotState outcome, const QStringList &steps)
{
    const bool isGood = outcome == BotState::finished;
    const bool hasFocus = m_context.state.focusId.value() == m_id;
    const bool isShown = m_context.state.editTask(m_id, [&](AgentTask &task) {
        task.state = outcome;
        task.steps = steps;
        task.stepIndex = 0;
        if (!hasFocus)
            task.pillBadge = isGood ? PillBadge::finished : PillBadge::error;
    });
    if (!isShown)
        return false;

    m_context.sound.play(isGood ? QStringLiteral("finish") : QStringLiteral("error"));
    m_context.queue.after(settleDelay, &m_life, [this] { settle(); });
    return true;
}

void ServicePill::settle()
{
    // Somebody else may have taken the pill over in the meantime.
    const auto task = m_context.state.task(m_id);
    if (!task || !m_outcomes.contains(task->state))
        return;
    m_context.state.editTask(m_id, [](AgentTask &edited) {
        edited.state = BotState::idle;
        edited.steps.clear();
        edited.stepIndex = 0;
        edited.pillBadge.reset();
    });
}

} // namespace tirlo
