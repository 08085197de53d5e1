#pragma once

#include "support/HomeParts.h"

#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

using namespace Qt::StringLiterals;

/// A test of what works on the store and the services.
struct StoreFixture : testing::Test, HomeParts
{
    StoreFixture()
    {
        QObject::connect(&notifications, &Notifications::hookReveal, [this] { ++reveals; });
    }

    AgentTask task(const QString &id) const { return state.task(id).value_or(AgentTask()); }

    /// The lines of one of the program's logs, without their time stamps of so many characters.
    QStringList logLines(const QString &name, qsizetype stampLength) const
    {
        log.flush();
        QFile file(paths.logFolder() + u'/' + name);
        QStringList lines;
        if (file.open(QIODevice::ReadOnly)) {
            while (!file.atEnd())
                lines += QString::fromUtf8(file.readLine()).mid(stampLength + 1).chopped(1);
        }
        return lines;
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

    int reveals = 0;
};

} // namespace tirlo
