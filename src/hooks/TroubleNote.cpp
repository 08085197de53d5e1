#include "TroubleNote.h"

#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/Notifications.h"
#include "platform/MainQueue.h"

#include <QPointer>

#include <utility>

namespace tirlo {

TroubleNote::TroubleNote(const HookContext &context, QObject *parent)
    : QObject(parent)
    , m_context(context)
{
}

void TroubleNote::set(const QString &trouble)
{
    const QString before = std::exchange(
        m_note,
        trouble.isEmpty() ? QString() : QStringLiteral("Agents can't reach Tirlo: ") + trouble);
    if (m_note == before)
        return;
    const AppState &state = m_context.state;
    if (std::exchange(m_isSaid, false) && m_note.isEmpty() && state.noteMessage.value() == before)
        m_context.island.leave(IslandView::note);
    sayWhenFree();
    if (!m_note.isEmpty() && !m_isSaid)
        follow();
}

/// What is on show may be in the middle of its change when it is heard of.
void TroubleNote::follow()
{
    const auto later = [this] {
        m_context.queue.post([self = QPointer(this)] {
            if (self)
                self->sayWhenFree();
        });
    };
    m_view = m_context.state.view.addNotifier(later);
    m_request = m_context.state.pendingApproval.addNotifier(later);
}

void TroubleNote::sayWhenFree()
{
    const AppState &state = m_context.state;
    if (!m_note.isEmpty()
        && (m_isSaid || state.view.value() == IslandView::greeting
            || state.pendingApproval.value()))
        return;
    m_view.reset();
    m_request.reset();
    if (m_note.isEmpty())
        return;
    m_isSaid = true;
    m_context.island.say(m_note);
    Q_EMIT m_context.notifications.hookExpand(IslandView::note);
}

} // namespace tirlo
