#include "AppState.h"

#include "AgentCatalog.h"
#include "ServiceData.h"
#include "platform/MainQueue.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr qsizetype maximumActiveIntegrations = 4;
constexpr QLatin1String editorPillId = AgentCatalog::pillId(AgentId::claudeCode);

AgentTask taskFromRow(const PillDefinition &row)
{
    AgentTask task;
    task.id = row.id;
    task.name = row.name;
    task.color = row.color;
    task.source = row.source;
    task.isIntegration = true;
    return task;
}

constexpr qsizetype roomBeside = 4;

/// Position of the id in the catalogue; -1 for one that it doesn't hold.
std::ptrdiff_t catalogPosition(const QString &id)
{
    const PillDefinition *row = PillCatalog::definition(id);
    return row ? row - PillCatalog::all().data() : -1;
}

} // namespace

AppState::AppState(KeyValueStore &store, const MainQueue &clock)
    : lastMouseMove(clock.mediaTime())
    , lastActivity(lastMouseMove)
    , mainPillId(editorPillId)
    , m_services(std::make_unique<ServiceData>())
    , m_settings(store)
{
    m_settings.apply(*this);
    loadIntegrationTasks();
}

AppState::~AppState() = default;

std::optional<AgentTask> AppState::focusTask() const
{
    if (const auto id = focusId.value()) {
        if (auto focused = task(*id))
            return focused;
    }
    const auto &list = tasks.value();
    return list.isEmpty() ? std::nullopt : std::optional(list.first());
}

QList<AgentTask> AppState::tasksBeside(const std::optional<QString> &id) const
{
    QList<AgentTask> others = tasks;
    others.removeIf([&](const AgentTask &task) { return task.id == id; });
    return others.first(std::min(others.size(), roomBeside));
}

QString AppState::activeChatModel() const
{
    switch (chatProvider.value()) {
    case ChatProvider::anthropic:
        return claudeModel;
    case ChatProvider::google:
        return googleChatModel;
    case ChatProvider::openai:
        return openAIChatModel;
    }
    return {};
}

std::optional<AgentTask> AppState::task(const QString &id) const
{
    const qsizetype index = indexOfTask(id);
    return index < 0 ? std::nullopt : std::optional(tasks.value().at(index));
}

void AppState::updateTask(const QString &id, BotState state)
{
    editTask(id, [state](AgentTask &task) { task.state = state; });
}

void AppState::setFocus(const QString &id)
{
    if (indexOfTask(id) < 0)
        return;
    focusId = id;
    editTask(id, [](AgentTask &task) { task.pillBadge.reset(); });
}

void AppState::removeTask(const QString &id)
{
    const bool isMain = id == mainPillId;
    const PillDefinition *row = PillCatalog::definition(id);
    if (isMain || (row && activeIntegrations.value().contains(id))) {
        editTask(id, [row](AgentTask &task) {
            task.state = BotState::idle;
            task.steps.clear();
            task.stepIndex = 0;
            task.pillBadge.reset();
            task.outcome.clear();
            task.outcomeFolder.clear();
            task.sessions.clear();
            if (row)
                task.name = row->name;
        });
        return;
    }

    dropTasks(id);
    if (focusId.value() == id)
        focusId = mainPillId.value();
}

void AppState::toggleIntegration(const QString &id)
{
    if (id == mainPillId)
        return;
    const PillDefinition *row = PillCatalog::definition(id);
    if (!row)
        return;

    QSet<QString> active = activeIntegrations;
    if (active.remove(id)) {
        activeIntegrations = active;
        dropTasks(id);
        if (focusId.value() == id)
            focusId = mainPillId.value();
        return;
    }

    if (active.size() >= maximumActiveIntegrations)
        return;
    active.insert(id);
    activeIntegrations = active;
    if (indexOfTask(id) < 0) {
        tasks = tasks.value() + QList{taskFromRow(*row)};
        sortTasksByCatalog();
    }
}

void AppState::loadIntegrationTasks()
{
    QSet<QString> active = activeIntegrations;
    active.removeIf([](const QString &id) { return !PillCatalog::definition(id); });
    if (!PillCatalog::canBeMainPill(mainPillId))
        mainPillId = editorPillId;
    active.remove(mainPillId);
    activeIntegrations = active;

    for (const PillDefinition &row : PillCatalog::all()) {
        const bool isActive = row.id == mainPillId || active.contains(row.id);
        const bool exists = indexOfTask(row.id) >= 0;
        if (exists && !isActive)
            dropTasks(row.id);
        else if (!exists && isActive)
            tasks = tasks.value() + QList{taskFromRow(row)};
    }
    sortTasksByCatalog();
    if (!focusId.value())
        focusId = mainPillId.value();
}

void AppState::setAbsenceInterval(double seconds)
{
    absenceInterval = seconds;
    m_settings.writeAbsenceInterval(*this);
}

void AppState::setHotkey(std::uint32_t flags, std::uint16_t code)
{
    // Whoever follows them sees both or neither.
    Qt::beginPropertyUpdateGroup();
    hotkeyFlags = flags;
    hotkeyCode = code;
    Qt::endPropertyUpdateGroup();
    m_settings.writeHotkey(*this);
}

qsizetype AppState::indexOfTask(const QString &id) const
{
    const auto &list = tasks.value();
    const auto found = std::ranges::find(list, id, &AgentTask::id);
    return found == list.end() ? -1 : found - list.begin();
}

void AppState::dropTasks(const QString &id)
{
    QList<AgentTask> kept = tasks;
    kept.removeIf([&id](const AgentTask &task) { return task.id == id; });
    tasks = kept;
}

void AppState::sortTasksByCatalog()
{
    QList<AgentTask> known;
    QList<AgentTask> others;
    for (const AgentTask &task : tasks.value())
        (catalogPosition(task.id) >= 0 ? known : others).append(task);
    std::ranges::stable_sort(known, {},
                             [](const AgentTask &task) { return catalogPosition(task.id); });

    // Agents from outside stand right behind the main editor's pill, else in front.
    const auto editor = std::ranges::find(known, editorPillId, &AgentTask::id);
    const qsizetype split = editor == known.end() ? 0 : editor - known.begin() + 1;
    tasks = known.first(split) + others + known.sliced(split);
}

} // namespace tirlo
