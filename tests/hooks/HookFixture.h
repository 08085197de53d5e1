#pragma once

#include "hooks/HookContext.h"
#include "support/FakeProcessWatch.h"
#include "support/StandInIsland.h"
#include "support/StoreFixture.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace tirlo {

inline QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

/// The store and the services around the hooks.
struct HookFixture : StoreFixture
{
    HookFixture()
    {
        QObject::connect(&notifications, &Notifications::hookExpand,
                         [this](IslandView view) { expanded.append(view); });
        QObject::connect(&notifications, &Notifications::islandCollapse, [this] { ++collapses; });
    }

    /// The lines of the hooks' log without their time stamps.
    QStringList logLines() const { return StoreFixture::logLines(u"qv.log"_s, 19); }

    StandInIsland island{state};
    FakeProcessWatch processes;
    HookContext context{state, notifications, island, sounds, queue, processes, log};

    QList<IslandView> expanded;
    int collapses = 0;
};

} // namespace tirlo
