#include "Scene.h"

#include "core/IslandConst.h"

namespace tirlo {

namespace {

AgentTask makeTask(const char *id, const char *name, const char *color, BotState mood)
{
    AgentTask task;
    task.id = QString::fromLatin1(id);
    task.name = QString::fromLatin1(name);
    task.color = QString::fromLatin1(color);
    task.state = mood;
    task.steps = {QStringLiteral("Lit · package.json"), QStringLiteral("Modifie · Header.tsx"),
                  QStringLiteral("Teste · npm test -- --run header")};
    task.stepIndex = 2;
    return task;
}

} // namespace

Scene::Scene(MainQueue &queue, FrameDriver &driver)
    : m_frames(queue, driver)
    , m_sight(queue)
    , state(m_settings, queue)
{
    using enum BotState;
    state.tasks = {makeTask("integration_claude", "lighthouse", "#F5F6F8", working),
                   makeTask("agent_codex", "harbour", "#2DD4BF", working),
                   makeTask("agent_antigravity", "breakwater", "#E879F9", thinking),
                   makeTask("agent_gemini", "buoy", "#8AB4F8", searching),
                   makeTask("integration_github", "anchor", "#F4505E", error)};
    state.focusId = QStringLiteral("integration_claude");
    m_root = std::make_unique<IslandRootView>(
        ViewContext{state, m_notifications, m_island, m_sounds, queue, m_frames, m_screens,
                    m_applications, m_keychain, m_actions, m_sight});
    m_root->setWindowFlags(Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    m_root->setAttribute(Qt::WA_TranslucentBackground);
    m_root->setFixedSize(IslandConst::panelWidth, IslandConst::panelHeight);
}

} // namespace tirlo
