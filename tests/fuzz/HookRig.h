#pragma once

#include "Fuzz.h"
#include "hooks/ApprovalDesk.h"
#include "hooks/HookEventProcessor.h"
#include "hooks/HookSocketServer.h"
#include "hooks/HookTasks.h"
#include "hooks/Peer.h"
#include "hooks/ThreadGroup.h"
#include "support/StoreParts.h"

#include <algorithm>
#include <thread>

namespace tirlo {

/// True for what a relay may read as an answer.
inline bool isReply(const QByteArray &bytes)
{
    return std::ranges::any_of(allCases<Decision>(), [&](Decision decision) {
        return bytes == "{\"permissionDecision\":\"" + rawText(decision).toLatin1() + "\"}\n";
    });
}

/// The hooks of a program that has just started, with the real socket and a still clock.
///
/// The parts are those of the hook server, which would write its scripts anew each time.
struct HookRig : StoreParts
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

    HookContext context{state, notifications, sound, queue, log};
    HookTasks tasks{state, notifications};
    ThreadGroup writers;
    ApprovalDesk desk{context, tasks, writers};
    HookEventProcessor processor{context, tasks, desk};
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

} // namespace tirlo
