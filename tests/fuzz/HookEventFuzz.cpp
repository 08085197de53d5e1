#include "Fuzz.h"
#include "HookRig.h"
#include "core/PillCatalog.h"

#include <QJsonDocument>

#include <vector>

namespace tirlo {

namespace {

bool isPill(const QString &id)
{
    return PillCatalog::definition(id) || (id.startsWith("agent_") && validateAgent(id.mid(6)));
}

void checkState(const AppState &state)
{
    QSet<QString> ids;
    const QList<AgentTask> tasks = state.tasks;
    for (const AgentTask &task : tasks) {
        REQUIRE(isPill(task.id) && !ids.contains(task.id));
        ids.insert(task.id);
        REQUIRE(!task.name.isEmpty() && task.steps.size() <= 20);
        REQUIRE(task.steps.isEmpty() ? task.stepIndex == 0
                                     : task.stepIndex == task.steps.size() - 1);
    }
    REQUIRE(!state.focusId.value() || ids.contains(*state.focusId.value()));
    REQUIRE(tasks.isEmpty() || state.mode != IslandMode::hidden || !state.isPresent);

    const auto approval = state.pendingApproval.value();
    REQUIRE(state.isPinned == approval.has_value());
    if (approval) {
        // Nothing moves a pill that waits for an answer, and none from outside ever has a card.
        REQUIRE(PillCatalog::definition(approval->pillId));
        REQUIRE(state.task(approval->pillId)->state == BotState::approval);
    }
}

/// True when the line tells that the request on show was dealt with in its agent.
bool settles(const QByteArray &line, const ApprovalInfo &approval)
{
    const QJsonObject payload = QJsonDocument::fromJson(line).object();
    const HookOrigin origin = HookOrigin::of(payload);
    const QString event = payload.value(u"hook_event_name").toString();
    const auto route = routeOf(origin);
    if (origin.sessionId != approval.sessionId || !route || route->pillId != approval.pillId)
        return false;
    if (event.startsWith(QLatin1String("PostToolUse")))
        return payload.value(u"tool_name").toString() == approval.tool;
    return QStringList{"Stop", "StopFailure", "UserPromptSubmit", "SessionEnd", "Interrupt"}
        .contains(event);
}

} // namespace

/// A day of hooks: each line is a connection of its own, but "!word" the user's answer to a
/// request, "-" an agent that hangs up on its last request, and "+" a minute that passes.
void fuzz(const QByteArray &input)
{
    HookRig rig;
    std::vector<Peer> waiting;
    for (const QByteArray &line : input.split('\n').mid(0, 40)) {
        if (line.startsWith('+')) {
            rig.queue.advance(60);
        } else if (line.startsWith('!')) {
            rig.desk.sendApprovalDecision(
                fromRawText<Decision>(QString::fromUtf8(line.mid(1))).value_or(Decision::deny));
            rig.settleWriters();
        } else if (line.startsWith('-') && !waiting.empty()) {
            rig.settleWriters();
            waiting.pop_back();
            QCoreApplication::processEvents();
        } else {
            const auto asked = rig.state.pendingApproval.value();
            Peer peer = rig.tell(line);
            REQUIRE(!asked || rig.state.pendingApproval.value() || settles(line, *asked));
            if (rig.wasRequest)
                waiting.push_back(std::move(peer));
            else
                REQUIRE(peer.receiveAll() == "{\"ok\":true}\n");
        }
        rig.queue.drain();
        checkState(rig.state);
    }

    // Whoever still asks gets an end within the time of a card.
    rig.settleWriters();
    rig.queue.advance(120);
    checkState(rig.state);
    REQUIRE(!rig.state.pendingApproval.value());
    for (Peer &peer : waiting) {
        const QByteArray reply = peer.receiveAll();
        REQUIRE(reply.isEmpty() || isReply(reply));
    }
}

} // namespace tirlo
