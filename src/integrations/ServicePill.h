#pragma once

#include "core/model/BotState.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tirlo {

struct PollerContext;

/// The pill of a service, which tells of an event for a minute and then settles.
///
/// The pill exists only while the user has the service among the active tools.
class ServicePill
{
public:
    /// What the context holds must outlive this; `outcomes` are the states that settle.
    ServicePill(const PollerContext &context, QString id, QList<BotState> outcomes);

    [[nodiscard]] bool exists() const;

    /// Puts the pill in the state `finished` or `error`, with steps, badge and sound.
    ///
    /// False without a pill.
    bool show(BotState outcome, const QStringList &steps);

private:
    void settle();

    const PollerContext &m_context;
    const QString m_id;
    const QList<BotState> m_outcomes;
    const QObject m_life;
};

} // namespace tirlo
