#pragma once

#include "core/AppLog.h"
#include "core/AppState.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "core/Paths.h"
#include "integrations/PollerContext.h"
#include "support/FakeHttpClient.h"
#include "support/ManualQueue.h"
#include "support/MemorySecretStore.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

using namespace Qt::StringLiterals;

/// The names of all items in which the pollers look for keys.
inline const QStringList serviceKeys{
    u"vercel-token"_s,   u"stripe-api-key"_s, u"github-token"_s, u"resend-api-key"_s,
    u"notion-api-key"_s, u"calcom-api-key"_s, u"n8n-api-key"_s,
};

/// The store and the services around the pollers, with every key, in a home and a time of their own.
struct PollerFixture : testing::Test
{
    PollerFixture()
    {
        keychain.load();
        for (const QString &item : serviceKeys)
            keychain.set(item, u"key"_s);
        keychain.set(u"n8n-url"_s, u"http://n8n.test"_s);
        QObject::connect(&notifications, &Notifications::hookReveal, [this] { ++reveals; });
    }

    /// Makes the service's pill exist, as the user's choice in the settings does.
    void activate(const QString &id) { state.toggleIntegration(id); }

    AgentTask pill(const QString &id) const { return state.task(id).value_or(AgentTask()); }

    /// Sends a cycle of the poller and answers its one request with status 200.
    template<typename SomePoller>
    void cycle(SomePoller &poller, const QByteArray &body)
    {
        poller.poll();
        ASSERT_TRUE(http.answer({.status = 200, .body = body}));
    }

    /// The address of the last request.
    QString lastAddress() const { return http.requests.back().url.toString(); }

    /// Lets other threads go on until the condition holds.
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

    /// The lines of n8n's log without their time stamps, and forgets them.
    QStringList takeLogLines() const
    {
        QFile file(paths.logFolder() + u"/n8n.log"_s);
        QStringList lines;
        if (file.open(QIODevice::ReadWrite)) {
            while (!file.atEnd())
                lines += QString::fromUtf8(file.readLine()).mid(9).chopped(1);
            file.resize(0);
        }
        return lines;
    }

    QTemporaryDir home;
    Paths paths{home.path()};
    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sound;
    FakeHttpClient http;
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    AppLog log{paths, queue};
    PollerContext context{state, notifications, sound, queue, http, keychain, log};

    int reveals = 0;
};

} // namespace tirlo
