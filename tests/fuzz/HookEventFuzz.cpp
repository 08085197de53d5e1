#include "Fuzz.h"
#include "core/PillCatalog.h"
#include "hooks/ApprovalDesk.h"
#include "hooks/ApprovalReply.h"
#include "hooks/HookEventProcessor.h"
#include "hooks/HookSocketServer.h"
#include "hooks/HookTasks.h"
#include "hooks/Peer.h"
#include "hooks/SessionBook.h"
#include "platform/ThreadGroup.h"
#include "support/FakeProcessWatch.h"
#include "support/HomeParts.h"
#include "support/StandInIsland.h"

#include <QJsonDocument>

#include <algorithm>
#include <thread>
#include <vector>

namespace tirlo {

namespace {

/// True for what a relay may read as an answer.
bool isReply(const QByteArray &bytes)
{
    return std::ranges::any_of(allCases<Decision>(), [&](Decision decision) {
        return bytes == replyLine({.decision = decision}) + '\n';
    });
}

/// The hooks of a program that has just started, with the real socket and a still clock.
///
/// The parts are those of the hook server, which would write its scripts anew each time.
struct HookRig : HomeParts
{
    HookRig()
    {
        QDir().mkpath(paths.supportFolder());
        sockets.start();
    }

    /// An agent that connects, sends the line and has it handled.
    Peer tell(const QByteArray &line)
    {
        Peer peer = Peer::connectedTo(paths.socketPath());
        REQUIRE(peer.isConnected());
        isHandled = wasRequest = false;
        peer.send(line + '\n');
        // An event is answered and a request posted only after all was read.
        while (!isHandled && !peer.isReadable()) {
            queue.drain();
            std::this_thread::yield();
        }
        queue.drain();
        return peer;
    }

    void settleWriters()
    {
        writers.wait();
        queue.drain();
    }

    StandInIsland island{state};
    FakeProcessWatch processes;
    HookContext context{state, notifications, island, sounds, queue, processes, log};
    HookTasks tasks{state, notifications};
    ThreadGroup writers;
    SessionBook sessions{state, queue, processes};
    ApprovalDesk desk{context, tasks, sessions, writers};
    HookEventProcessor processor{context, tasks, sessions, desk};
    bool isHandled = false;
    bool wasRequest = false;
    HookSocketServer sockets{queue,
                             paths.socketPath(),
                             {.event =
                                  [this](const QString &name, const QJsonObject &payload) {
                                      processor.processEvent(name, payload);
                                      isHandled = true;
                                  },
                              .permissionRequest =
                                  [this](FileDescriptor connection, const QJsonObject &payload) {
                                      desk.processPermissionRequest(std::move(connection), payload);
                                      isHandled = wasRequest = true;
                                  }}};
};

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
        REQUIRE(task.sessions.size() <= 64);
        REQUIRE(task.steps.isEmpty() ? task.stepIndex == 0
                                     : task.stepIndex == task.steps.size() - 1);
    }
    REQUIRE(!state.focusId.value() || ids.contains(*state.focusId.value()));

    const auto approval = state.pendingApproval.value();
    REQUIRE(state.isPinned == approval.has_value());
    if (approval) {
        // Nothing moves a pill that waits for an answer, and none from outside ever has a card.
        REQUIRE(PillCatalog::definition(approval->pillId));
        REQUIRE(state.task(approval->pillId)->state == BotState::approval);
    }
}

/// True when the line tells of the session that asked, in which alone a request can be dealt with.
bool isOfSession(const QByteArray &line, const ApprovalInfo &approval)
{
    const HookOrigin origin = HookOrigin::of(QJsonDocument::fromJson(line).object());
    const auto route = routeOf(origin);
    return origin.sessionId == approval.sessionId && route && route->pillId == approval.pillId;
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
                {fromRawText<Decision>(QString::fromUtf8(line.mid(1))).value_or(Decision::deny)});
            rig.settleWriters();
        } else if (line.startsWith('-') && !waiting.empty()) {
            rig.settleWriters();
            waiting.pop_back();
            QCoreApplication::processEvents();
        } else {
            const auto asked = rig.state.pendingApproval.value();
            Peer peer = rig.tell(line);
            REQUIRE(!asked || rig.state.pendingApproval.value() || isOfSession(line, *asked));
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
