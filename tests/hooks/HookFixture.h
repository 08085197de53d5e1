#pragma once

#include "core/AppLog.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/Paths.h"
#include "hooks/HookContext.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace tirlo {

using namespace Qt::StringLiterals;

inline QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

/// The store and the services around the hooks, in a home and a time of their own.
struct HookFixture : testing::Test
{
    HookFixture()
    {
        QObject::connect(&notifications, &Notifications::hookExpand,
                         [this](IslandView view) { expanded.append(view); });
        QObject::connect(&notifications, &Notifications::hookReveal, [this] { ++reveals; });
        QObject::connect(&notifications, &Notifications::islandCollapse, [this] { ++collapses; });
    }

    /// The lines of the hooks' log without their time stamps.
    QStringList logLines() const
    {
        QFile file(paths.logFolder() + u"/qv.log"_s);
        QStringList lines;
        if (file.open(QIODevice::ReadOnly)) {
            while (!file.atEnd())
                lines += QString::fromUtf8(file.readLine()).mid(20).chopped(1);
        }
        return lines;
    }

    AgentTask task(const char *id) const
    {
        return state.task(QString::fromLatin1(id)).value_or(AgentTask());
    }

    /// Lets other threads and descriptors go on until the condition holds, for 10 seconds at most.
    template<typename Condition>
    bool eventually(Condition condition)
    {
        return QTest::qWaitFor(
            [&] {
                queue.drain();
                return condition();
            },
            10000);
    }

    QTemporaryDir home;
    Paths paths{home.path()};
    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sound;
    AppLog log{paths, queue};
    HookContext context{state, notifications, sound, queue, log};

    QList<IslandView> expanded;
    int reveals = 0;
    int collapses = 0;
};

} // namespace tirlo
