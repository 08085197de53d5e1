#include "SessionBook.h"

#include "core/AgentCatalog.h"
#include "core/AppState.h"

#include <QHash>

#include <algorithm>
#include <tuple>
#include <utility>

namespace tirlo {

namespace {

/// Sessions that one pill keeps.
constexpr std::size_t mostSessions = 64;
constexpr qsizetype mostPast = 64;
/// How long a session may be silent and still be taken to do what it last said.
constexpr double restSeconds = 600;
/// How much later it may come to rest, to share a wake-up with something else.
constexpr double restSlack = 30;

/// 0 for the most urgent.
int rank(BotState state)
{
    using enum BotState;
    switch (state) {
    case approval:
        return 0;
    case question:
        return 1;
    case error:
        return 2;
    case ratelimit:
        return 3;
    case working:
    case thinking:
    case searching:
        return 4;
    case finished:
        return 5;
    case idle:
    case sleeping:
    case dizzy:
        return 6;
    }
    return 6;
}

std::optional<PillBadge> badgeOf(BotState state)
{
    switch (state) {
    case BotState::approval:
    case BotState::question:
        return PillBadge::approval;
    case BotState::error:
    case BotState::ratelimit:
        return PillBadge::error;
    case BotState::finished:
        return PillBadge::finished;
    default:
        return std::nullopt;
    }
}

template<typename Item>
void remember(QList<Item> &last, const Item &item)
{
    if (!last.contains(item))
        last.append(item);
    if (last.size() > mostPast)
        last.removeFirst();
}

constexpr auto idOf = [](const auto &record) -> const QString & { return record.shown.id; };

} // namespace

bool SessionBook::Record::mayEndInSilence() const
{
    return !transcript.isEmpty() && (asks() || rank(shown.state) == rank(BotState::working));
}

bool SessionBook::Record::asks() const
{
    return shown.state == BotState::approval || shown.state == BotState::question;
}

/// One that asks waits for its user as long as its process lives.
bool SessionBook::Record::comesToRest() const
{
    return shown.state != BotState::idle && !(asks() && watch);
}

const QString SessionBook::waitingStep = QStringLiteral("waiting in the terminal");

SessionBook::SessionBook(AppState &state, MainQueue &queue, ProcessWatch &processes)
    : m_state(state)
    , m_queue(queue)
    , m_processes(processes)
{
}

bool SessionBook::isPast(const HookRoute &route, const HookOrigin &origin) const
{
    return (origin.process && m_past.contains(*origin.process))
        || m_goodbyes.contains(SessionKey{route.pillId, origin.sessionId});
}

void SessionBook::sayGoodbye(const SessionKey &key)
{
    if (key.id != HookOrigin::unknownSession)
        remember(m_goodbyes, key);
}

void SessionBook::greet(const SessionKey &key)
{
    m_goodbyes.removeOne(key);
}

BotState SessionBook::stateOf(const SessionKey &key) const
{
    const Record *record = find(key);
    return record ? record->state : BotState::idle;
}

void SessionBook::hear(const HookRoute &route, const HookOrigin &origin, bool isNews)
{
    if (!m_state.task(route.pillId))
        return;
    const SessionKey key{route.pillId, origin.sessionId};
    Pill &pill = m_pills[key.pill];
    pill.isExternal = route.isExternal();
    if (!find(key)) {
        makeRoom(pill.sessions);
        Record fresh;
        fresh.shown.id = key.id;
        fresh.shown.since = m_queue.wallClock();
        pill.sessions.push_back(std::move(fresh));
    }

    Record &record = *find(key);
    record.shown.folder = origin.projectName;
    record.heard = m_queue.mediaTime();
    if (isNews || !record.heardAt.isValid())
        record.heardAt = m_queue.wallClock();
    if (!origin.cwd.isEmpty())
        record.cwd = origin.cwd;
    const AgentDefinition *agent = AgentCatalog::ofPill(key.pill);
    if (agent && agent->endsInSilence)
        record.transcript = origin.transcript;
    follow(key, record, origin.process);
    publish(key.pill);
}

bool SessionBook::resume(const SessionKey &key)
{
    const Record *record = find(key);
    if (!record || record->state != BotState::finished)
        return false;
    setState(key, BotState::idle);
    return true;
}

void SessionBook::setState(const SessionKey &key, BotState state)
{
    Record *record = find(key);
    if (!record)
        return;
    record->later.cancel();
    record->state = state;
    publish(key.pill);
    restLater();
}

void SessionBook::setStep(const SessionKey &key, const QString &step)
{
    if (Record *record = find(key)) {
        record->shown.step = step;
        publish(key.pill);
    }
}

void SessionBook::end(const SessionKey &key)
{
    const auto pill = m_pills.find(key.pill);
    if (pill == m_pills.end())
        return;
    Records &sessions = pill->second.sessions;
    const auto session = std::ranges::find(sessions, key.id, idOf);
    if (session == sessions.end())
        return;
    session->later.cancel();
    sessions.erase(session);
    if (!sessions.empty()) {
        publish(key.pill);
        return;
    }
    m_pills.erase(pill);
    m_state.removeTask(key.pill);
    tellApart();
}

void SessionBook::after(const SessionKey &key, double seconds, std::function<void()> work)
{
    if (Record *record = find(key)) {
        record->later.cancel();
        record->later = m_queue.after(seconds, this, std::move(work));
    }
}

void SessionBook::fallBack(const SessionKey &key, const AskedCall &call)
{
    Record *record = find(key);
    if (!record)
        return;
    record->asked = call;
    record->shown.step = waitingStep;
    setState(key, BotState::working);
}

void SessionBook::moveOn(const SessionKey &key)
{
    if (Record *record = find(key)) {
        record->asked.reset();
        publish(key.pill);
    }
}

std::optional<AskedCall> SessionBook::askedInTerminal(const SessionKey &key) const
{
    const Record *record = find(key);
    return record ? record->asked : std::nullopt;
}

std::vector<SessionBook::QuietWorker> SessionBook::quietWorkers(double seconds) const
{
    std::vector<QuietWorker> quiet;
    for (const auto &[pillId, pill] : m_pills) {
        for (const Record &record : pill.sessions) {
            if (record.mayEndInSilence() && !hasCard(pillId, record)
                && m_queue.mediaTime() - record.heard >= seconds)
                quiet.push_back({{pillId, record.shown.id},
                                 {record.shown.id, record.transcript,
                                  record.process ? record.process->pid : 0, record.heardAt}});
        }
    }
    return quiet;
}

const SessionBook::Record *SessionBook::find(const SessionKey &key) const
{
    const auto pill = m_pills.find(key.pill);
    if (pill == m_pills.end())
        return nullptr;
    const auto session = std::ranges::find(pill->second.sessions, key.id, idOf);
    return session == pill->second.sessions.end() ? nullptr : &*session;
}

SessionBook::Record *SessionBook::find(const SessionKey &key)
{
    return const_cast<Record *>(std::as_const(*this).find(key));
}

/// Lets the session go that is missed least: of those at rest, else of those that do not ask, the
/// one not heard of for longest.
void SessionBook::makeRoom(Records &sessions)
{
    if (sessions.size() < mostSessions)
        return;
    const auto spare = std::ranges::min_element(sessions, {}, [](const Record &record) {
        return std::tuple(record.shown.state != BotState::idle, record.asks(), record.heard);
    });
    spare->later.cancel();
    sessions.erase(spare);
}

/// Watches the process once the session has named it a second time: something between the agent and
/// its hook may look like the agent, but is another process at each event.
void SessionBook::follow(const SessionKey &key, Record &record,
                         const std::optional<ProcessId> &process)
{
    if (!process)
        return;
    if (record.process != process) {
        record.process = process;
        record.watch.reset();
        record.isFollowed = false;
        return;
    }
    if (std::exchange(record.isFollowed, true))
        return;
    record.watch = m_processes.watch(*process, [this, key, ended = *process] {
        remember(m_past, ended);
        if (processEnded)
            processEnded(key);
    });
}

/// Gives the pill in the store what its sessions make of it.
void SessionBook::publish(const QString &pillId)
{
    Pill &pill = m_pills.at(pillId);
    Records &sessions = pill.sessions;
    QList<AgentSession> shown;
    for (Record &record : sessions) {
        const BotState state = record.asked ? BotState::approval : record.state;
        if (std::exchange(record.shown.state, state) != state)
            record.shown.since = m_queue.wallClock();
        record.shown.waitsInTerminal = record.asked.has_value();
        shown.append(record.shown);
    }

    const Record &lead = leadOf(sessions);
    const auto task = m_state.task(pillId);
    if (task && (task->state != lead.shown.state || task->sessions != shown)) {
        m_state.editTask(pillId, [&](AgentTask &edited) {
            edited.state = lead.shown.state;
            edited.sessions = shown;
            if (shown.size() > 1 && !lead.cwd.isEmpty())
                edited.sessionCwd = lead.cwd;
        });
    }
    followBadge(pillId, pill);
    tellApart();
    if (changed)
        changed();
}

/// Marks a pill that is not in focus once its most urgent session has something to say, and takes
/// the mark off with the reason for it. What the user has looked at is not marked again.
void SessionBook::followBadge(const QString &pillId, Pill &pill)
{
    const auto badge = badgeOf(leadOf(pill.sessions).shown.state);
    if (std::exchange(pill.badge, badge) == badge)
        return;
    const bool isFocus = m_state.focusId.value() == pillId;
    m_state.editTask(pillId, [shown = isFocus ? std::nullopt : badge](AgentTask &task) {
        task.pillBadge = shown;
    });
}

/// Whether the session's request is on show here.
bool SessionBook::hasCard(const QString &pillId, const Record &record) const
{
    const std::optional<ApprovalInfo> &request = m_state.pendingApproval.value();
    return request && request->pillId == pillId && request->sessionId == record.shown.id;
}

/// The session that its pill shows: the most urgent one, of several the one heard of last.
const SessionBook::Record &SessionBook::leadOf(const Records &sessions)
{
    return *std::ranges::min_element(sessions, {}, [](const Record &record) {
        return std::pair(rank(record.shown.state), -record.heard);
    });
}

/// Names each pill after the folder of its session, and those of the same folder by their agents
/// too. Agents from outside go by their own names.
void SessionBook::tellApart()
{
    QHash<QString, int> uses;
    for (const auto &[pillId, pill] : m_pills) {
        if (!pill.isExternal)
            ++uses[leadOf(pill.sessions).shown.folder];
    }
    for (const auto &[pillId, pill] : m_pills) {
        const AgentDefinition *agent = AgentCatalog::ofPill(pillId);
        if (pill.isExternal || !agent)
            continue;
        QString name = leadOf(pill.sessions).shown.folder;
        if (uses.value(name) > 1)
            name += QStringLiteral(" · ") + agent->name;
        const auto task = m_state.task(pillId);
        if (task && task->name != name)
            m_state.editTask(pillId, [&](AgentTask &edited) { edited.name = name; });
    }
}

/// Sees to it that a session comes to rest once it has been silent for long.
void SessionBook::restLater()
{
    if (m_resting.isPending())
        return;
    std::optional<double> first;
    forEach([&](const QString &, const Record &record) {
        if (record.comesToRest())
            first = std::min(first.value_or(record.heard), record.heard);
    });
    if (first) {
        const double wait = std::max(0.0, *first + restSeconds - m_queue.mediaTime());
        m_resting = m_queue.after(
            wait, this, [this] { restSilent(); }, restSlack);
    }
}

void SessionBook::restSilent()
{
    forEach([this](const QString &, Record &record) {
        if (!record.comesToRest() || m_queue.mediaTime() - record.heard < restSeconds)
            return;
        record.later.cancel();
        record.state = BotState::idle;
        record.asked.reset();
    });
    for (const auto &[pillId, pill] : m_pills)
        publish(pillId);
    restLater();
}

template<typename Visit>
void SessionBook::forEach(Visit visit)
{
    for (auto &[pillId, pill] : m_pills) {
        for (Record &record : pill.sessions)
            visit(pillId, record);
    }
}

} // namespace tirlo
