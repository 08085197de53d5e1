#include "Scene.h"

#include "core/AppState.h"
#include "island/IslandWriter.h"

namespace tirlo {

namespace {

AgentTask makeTask(const char *id, const char *name, const char *color, const QStringList &steps,
                   AgentSource source = AgentSource::agent)
{
    AgentTask task;
    task.id = QString::fromUtf8(id);
    task.name = QString::fromUtf8(name);
    task.color = QString::fromUtf8(color);
    task.steps = steps;
    task.stepIndex = steps.isEmpty() ? 0 : steps.size() - 1;
    task.source = source;
    return task;
}

AgentTask editorTask(const char *name = "tirlo-website")
{
    return makeTask("integration_claude", name, "#F5F6F8",
                    {QStringLiteral("Lit · package.json"), QStringLiteral("Modifie · Header.tsx"),
                     QStringLiteral("Teste · npm test -- --run header")},
                    AgentSource::claudeCode);
}

QList<AgentTask> crowd()
{
    QList<AgentTask> tasks{
        editorTask(), makeTask("agent_codex", "Codex", "#2DD4BF", {}),
        makeTask("agent_antigravity", "Antigravity", "#E879F9", {}),
        makeTask("agent_gemini", "Gemini CLI", "#8AB4F8", {}),
        makeTask("integration_github", "GitHub", "#F4505E", {}, AgentSource::n8n)};
    tasks[1].pillBadge = PillBadge::approval;
    tasks[2].pillBadge = PillBadge::finished;
    tasks[4].pillBadge = PillBadge::error;
    return tasks;
}

void open(AppState &state, IslandView view, const QList<AgentTask> &tasks)
{
    state.tasks = tasks;
    state.focusId = tasks.isEmpty() ? std::nullopt : std::optional(tasks.first().id);
    IslandWriter(state).setView(view);
    IslandWriter(state).setMode(IslandMode::expanded);
    // The mascot looks at the pointer: here it is on the card.
    state.mousePosition = {700, 120};
}

Scene overview(const char *caption, const QList<AgentTask> &tasks)
{
    return {QString::fromUtf8(caption), [tasks](AppState &state) {
                open(state, IslandView::overview, tasks);
                if (!tasks.isEmpty() && !tasks.first().steps.isEmpty())
                    state.updateTask(tasks.first().id, BotState::working);
            }};
}

Scene approval(const char *caption, const QString &command, const QList<AgentTask> &tasks)
{
    return {QString::fromUtf8(caption), [command, tasks](AppState &state) {
                ApprovalInfo request;
                request.command = command;
                request.pillId = tasks.isEmpty() ? QString() : tasks.first().id;
                state.pendingApproval = request;
                open(state, IslandView::approval, tasks);
                if (!tasks.isEmpty())
                    state.updateTask(tasks.first().id, BotState::approval);
            }};
}

Scene note(const char *caption, const QString &message)
{
    return {QString::fromUtf8(caption), [message](AppState &state) {
                state.noteMessage = message;
                open(state, IslandView::note, {editorTask()});
            }};
}

SceneGroup overviews()
{
    AgentTask fresh = editorTask();
    fresh.steps = {QStringLiteral("Démarre")};
    fresh.stepIndex = 0;
    AgentTask longest = editorTask("a-monorepository-with-a-remarkably-long-name");
    longest.steps = {QStringLiteral("Lit · docs/architecture/decisions/0042-event-sourcing.md"),
                     QStringLiteral("Exécute · cargo build --workspace --all-targets --release…")};
    longest.stepIndex = 1;
    AgentTask cjk = makeTask("agent_ja", "在庫管理システム", "#F7B32B",
                             {QStringLiteral("読み込み · 設定.json"),
                              QStringLiteral("検索 · ユーザー認証の実装を探しています")});
    AgentTask rtl = makeTask(
        "agent_he", "פרויקט חדש", "#34D399",
        {QStringLiteral("قراءة · الملف.txt"), QStringLiteral("מחפש · קובץ ההגדרות של המערכת")});
    AgentTask emoji = makeTask(
        "agent_emoji", "🚀 launch-party 👩‍👩‍👧", "#F472B6",
        {QStringLiteral("Lit · 🎉.md"),
         QStringLiteral("Exécute · echo \"Zoë ❤️ ไทย हिन्दी\"")});

    return {QStringLiteral("overview"),
            {overview("Four others with badges", crowd()), overview("Alone, first step", {fresh}),
             overview("Two others", crowd().mid(0, 3)),
             overview("Long names", {longest, longest, editorTask(), cjk}),
             overview("Chinese and Japanese", {cjk, rtl, emoji}),
             overview("Hebrew and Arabic", {rtl, cjk, emoji}),
             overview("Emoji, Thai, Hindi", {emoji, rtl, cjk}),
             overview("No steps yet",
                      {makeTask("integration_claude", "VS Code", "#F5F6F8", {},
                                AgentSource::claudeCode)}),
             overview("No name",
                      {makeTask("agent_x", "", "#C0C4CC", {QStringLiteral("Liste")}),
                       makeTask("agent_y", "", "#F7B32B", {})})}};
}

SceneGroup approvals()
{
    const QString longCommand = QStringLiteral(
        "git log --oneline --graph --decorate --all | head -n 40 && npm run build -- --mode "
        "production && rsync -az dist/ deploy@example.org:/srv/www");
    return {
        QStringLiteral("approval"),
        {approval("Short command", QStringLiteral("npm test"), {editorTask()}),
         approval("Long command", longCommand, {editorTask()}),
         approval("Codex", QStringLiteral("rm -rf build && cmake --preset release"),
                  {makeTask("agent_codex", "Codex", "#2DD4BF", {})}),
         approval("Several lines", QStringLiteral("cd /tmp\nfor f in *; do\n\techo $f\ndone"),
                  {editorTask("a-monorepository-with-a-remarkably-long-name-that-goes-on-and-"
                              "on-until-nobody-reads-it")}),
         approval("Chinese", QStringLiteral("cat 設定/利用者.json | grep 名前"),
                  {makeTask("agent_ja", "在庫管理システム", "#F7B32B", {})}),
         approval("Hebrew and a hidden reordering mark", QStringLiteral("echo שלום \u202Ecod.exe"),
                  {makeTask("agent_he", "פרויקט חדש", "#34D399", {})}),
         approval("Emoji", QStringLiteral("git commit -m \"🎉 ship it 👩‍👩‍👧\""),
                  {makeTask("agent_emoji", "🚀 launch-party", "#F472B6", {})}),
         approval("No focused task, no command", {}, {})}};
}

SceneGroup others()
{
    const auto card = [](const char *caption, IslandView view, const QList<AgentTask> &tasks) {
        return Scene{QString::fromUtf8(caption),
                     [view, tasks](AppState &state) { open(state, view, tasks); }};
    };
    AgentTask wordy = makeTask("agent_ja", "在庫管理システム", "#F7B32B",
                               {QStringLiteral("Exécute · cargo build --workspace --all-targets "
                                               "--release --features all,of,them,there,are")});
    return {QStringLiteral("cards"),
            {card("Empty", IslandView::empty, {}),
             note("Note", QStringLiteral("Handled in VS Code.")),
             note("Long note",
                  QStringLiteral("The provider answered with a message that is far too "
                                 "long for one line of the island to hold.")),
             card("Question", IslandView::question, {editorTask()}),
             card("Question, no focused task", IslandView::question, {}),
             card("Error", IslandView::error, {editorTask()}),
             card("Finished", IslandView::finished, {editorTask()}),
             card("Finished, long step", IslandView::finished, {wordy}),
             card("Finished, no steps", IslandView::finished,
                  {makeTask("agent_he", "פרויקט חדש", "#34D399", {})}),
             card("Confused", IslandView::confused, {editorTask()}),
             {QStringLiteral("Muted, settings open"),
              [](AppState &state) {
                  state.soundEnabled = false;
                  open(state, IslandView::settings, {editorTask()});
              }},
             card("A card without content", IslandView::searching, {editorTask()})}};
}

/// Cards of each wash with texts from everywhere, in their focused task and their message.
SceneGroup foreigners()
{
    AgentTask longest = editorTask("a-monorepository-with-a-remarkably-long-name-that-goes-on-and-"
                                   "on-until-nobody-reads-it");
    longest.steps = {QStringLiteral("Exécute · cargo build --workspace --all-targets --release "
                                    "--features all,of,them,there,are")};
    const AgentTask cjk = makeTask("agent_ja", "在庫管理システム", "#F7B32B",
                                   {QStringLiteral("検索 · ユーザー認証の実装を探しています")});
    const AgentTask rtl = makeTask("agent_he", "פרויקט חדש", "#34D399",
                                   {QStringLiteral("מחפש · קובץ ההגדרות של המערכת")});
    const AgentTask emoji = makeTask(
        "agent_emoji", "🚀 launch-party 👩‍👩‍👧", "#F472B6",
        {QStringLiteral("Exécute · echo \"Zoë ❤️ ไทย हिन्दी\"")});
    const AgentTask nameless = makeTask("agent_x", "", "#C0C4CC", {});

    SceneGroup group{QStringLiteral("foreign"), {}};
    for (const IslandView view : {IslandView::approval, IslandView::question, IslandView::error,
                                  IslandView::finished, IslandView::note}) {
        for (const AgentTask &task : {longest, cjk, rtl, emoji, nameless}) {
            const QString caption = QStringLiteral("%1, %2").arg(
                rawText(view), task.name.isEmpty() ? QStringLiteral("no name") : task.name);
            group.scenes.push_back({caption.left(60), [view, task](AppState &state) {
                                        const QString text = task.steps.value(0);
                                        state.noteMessage = text;
                                        ApprovalInfo request;
                                        request.command = text;
                                        state.pendingApproval = request;
                                        open(state, view, {task});
                                    }});
        }
    }
    return group;
}

/// Every card with something to read on it, in every wash.
SceneGroup washes()
{
    using enum CardBackground::Wash;
    SceneGroup group{QStringLiteral("washes"), {}};
    for (const IslandView view :
         {IslandView::overview, IslandView::empty, IslandView::approval, IslandView::question,
          IslandView::error, IslandView::finished, IslandView::confused, IslandView::note}) {
        const std::pair<const char *, CardBackground::Wash> tints[]{
            {"red", red},   {"green", green},   {"pink", pink}, {"amber", amber},
            {"cyan", cyan}, {"indigo", indigo}, {"soft", soft}};
        for (const auto &[name, wash] : tints)
            group.scenes.push_back(
                {QStringLiteral("%1, %2").arg(rawText(view), QString::fromLatin1(name)),
                 [view](AppState &state) {
                     ApprovalInfo request;
                     request.command = QStringLiteral("npm run build -- --mode production");
                     state.pendingApproval = request;
                     state.noteMessage = QStringLiteral("Handled in VS Code.");
                     open(state, view, crowd());
                 },
                 wash});
    }
    return group;
}

/// Every card's frame at its own height, whatever it holds.
SceneGroup frames()
{
    SceneGroup group{QStringLiteral("frames"), {}, {720, 320}};
    for (const IslandView view : allCases<IslandView>()) {
        if (view == IslandView::greeting)
            continue;
        group.scenes.push_back({QString(rawText(view)), [view](AppState &state) {
                                    open(state, view, crowd());
                                    state.uploadStartTime = -1.2;
                                }});
    }
    group.scenes.push_back({QStringLiteral("prompt after two messages"), [](AppState &state) {
                                state.chatHistory = {ChatMessage{}, ChatMessage{}};
                                open(state, IslandView::prompt, crowd());
                            }});
    return group;
}

SceneGroup outlines()
{
    const auto closed = [](const char *caption, IslandMode mode, bool hasNotch) {
        return Scene{QString::fromUtf8(caption), [mode, hasNotch](AppState &state) {
                         state.notchWidth = hasNotch ? 184 : 80;
                         state.notchHeight = hasNotch ? 32 : 24;
                         state.hasNotch = hasNotch;
                         IslandWriter(state).setMode(mode);
                     }};
    };
    return {QStringLiteral("outlines"),
            {closed("Hidden, notch", IslandMode::hidden, true),
             closed("Hidden, plain screen", IslandMode::hidden, false),
             closed("Compact, notch", IslandMode::compact, true),
             closed("Compact, plain screen", IslandMode::compact, false),
             {QStringLiteral("Compact, four others"),
              [](AppState &state) {
                  open(state, IslandView::overview, crowd());
                  IslandWriter(state).setMode(IslandMode::compact);
              }},
             {QStringLiteral("Compact, two others, plain screen"),
              [](AppState &state) {
                  open(state, IslandView::overview, crowd().mid(0, 3));
                  state.notchWidth = 80;
                  state.notchHeight = 24;
                  state.hasNotch = false;
                  IslandWriter(state).setMode(IslandMode::compact);
              }},
             {QStringLiteral("Expanded, about to run out"),
              [](AppState &state) {
                  state.lastActivity = -7.5;
                  open(state, IslandView::note, {editorTask()});
              }},
             closed("Expanded", IslandMode::expanded, true)}};
}

} // namespace

std::vector<SceneGroup> allScenes()
{
    return {overviews(), approvals(), others(), foreigners(), washes(), frames(), outlines()};
}

} // namespace tirlo
