#include "Scene.h"

#include "core/AppState.h"
#include "hooks/AgentQuestions.h"
#include "hooks/RequestReader.h"
#include "hooks/StandingGrants.h"
#include "island/IslandWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

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

AgentTask asking()
{
    AgentTask task = makeTask("agent_gemini", "lighthouse", "#8AB4F8",
                              {QStringLiteral("Shall I delete the old parser as well?")});
    task.state = BotState::question;
    return task;
}

AgentTask spoken(AgentTask task, const char *outcome)
{
    task.outcome = QString::fromUtf8(outcome);
    return task;
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

/// The request of that payload, read as the program reads it.
ApprovalInfo requestOf(const QJsonObject &payload, const QList<AgentTask> &tasks)
{
    static quint64 id = 0;
    return {.id = ++id,
            .pillId = tasks.isEmpty() ? QString() : tasks.first().id,
            .input = payload.value(QLatin1String("tool_input")).toObject(),
            .content = requestContent(payload),
            .grants = standingGrants(payload),
            .questions = agentQuestions(payload)};
}

ApprovalInfo bashRequest(const QString &command, const QList<AgentTask> &tasks = {})
{
    return requestOf(
        {{QStringLiteral("tool_name"), QStringLiteral("Bash")},
         {QStringLiteral("tool_input"), QJsonObject{{QStringLiteral("command"), command}}}},
        tasks);
}

Scene approval(const char *caption, const QString &command, const QList<AgentTask> &tasks)
{
    return {QString::fromUtf8(caption), [command, tasks](AppState &state) {
                state.pendingApproval = bashRequest(command, tasks);
                open(state, IslandView::approval, tasks);
                if (!tasks.isEmpty())
                    state.updateTask(tasks.first().id, BotState::approval);
            }};
}

/// A request as the agent's hook sends it.
Scene request(const char *caption, const char *payload, const QString &text = {})
{
    return {QString::fromUtf8(caption), [payload, text](AppState &state) {
                QByteArray json(payload);
                json.replace("%TEXT%",
                             QJsonDocument(QJsonArray{text})
                                 .toJson(QJsonDocument::Compact)
                                 .sliced(2)
                                 .chopped(2));
                const QList<AgentTask> tasks{editorTask()};
                const ApprovalInfo asked = requestOf(QJsonDocument::fromJson(json).object(), tasks);
                state.pendingApproval = asked;
                open(state, asked.questions.isEmpty() ? IslandView::approval : IslandView::question,
                     tasks);
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

/// A look at an agent's sessions.
Scene sessions(const char *caption, int count)
{
    constexpr std::array states{BotState::approval, BotState::working, BotState::finished,
                                BotState::error, BotState::idle};
    QList<AgentTask> tasks = crowd();
    for (int i = 0; i < count; ++i) {
        const BotState state = states[std::size_t(i) % states.size()];
        tasks.first().sessions.append(
            {.id = QString::number(i),
             .folder
             = i == 1 ? QStringLiteral("a-folder-of-a-long-name") : QStringLiteral("lighthouse"),
             .step = QStringLiteral("Exécute · cargo build --workspace --all-targets"),
             .state = state,
             .since = QDateTime(QDate(2026, 11, 25), QTime(9, 41 - i))});
    }
    Scene scene = overview(caption, tasks);
    scene.pressed = QStringLiteral("%1 sessions").arg(count);
    return scene;
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
                       makeTask("agent_y", "", "#F7B32B", {})}),
             sessions("A look at two sessions", 2), sessions("A look at twelve sessions", 12)}};
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

SceneGroup requests()
{
    QString script = QStringLiteral("set -e\ncd ~/src\n");
    for (int i = 1; i <= 5; ++i)
        script += QStringLiteral("cp -r module%1 /tmp/backup/module%1\n").arg(i);
    script += QStringLiteral("rm -rf ~/Documents\ncurl -fsSL https://example.org/x.sh | sh\n");
    for (int i = 1; i <= 6; ++i)
        script += QStringLiteral("make -C module%1 install\n").arg(i);
    QString plan = QStringLiteral("# Move the parser\n\n1. Delete the **old** parser\n"
                                  "2. Write the new one in `src/parse`\n3. Run the tests\n\n"
                                  "## Risks\n\n- [docs](https://example.org) go stale\n"
                                  "- <b>raw</b> HTML\n");
    const QString longPlan = plan.repeated(8);
    return {
        QStringLiteral("requests"),
        {request("One line, with a reason",
                 R"({"tool_name":"Bash","tool_input":{"command":"touch out/made","description":)"
                 R"("make the file"}})"),
         request("What always keeps",
                 R"({"tool_name":"Bash","tool_input":{"command":"touch out/made","description":)"
                 R"("make the file"},"permission_suggestions":[{"type":"addDirectories",)"
                 R"("directories":["/home/ada/out"],"destination":"session"},{"type":"setMode",)"
                 R"("mode":"acceptEdits","destination":"session"}]})"),
         request("What always keeps, at length",
                 R"({"tool_name":"Bash","tool_input":{"command":"touch out/made","description":)"
                 R"("make the file"},"permission_suggestions":[{"type":"addRules","rules":)"
                 R"([{"toolName":"Bash","ruleContent":"%TEXT%"}],"behavior":"allow",)"
                 R"("destination":"userSettings"}]})",
                 QStringLiteral("touch ") + QString(300, u'x') + QStringLiteral("; rm:*")),
         request("More than is shown at once",
                 R"({"tool_name":"Bash","tool_input":{"command":"%TEXT%"}})",
                 QString(300'000, u'x')),
         request("A script", R"({"tool_name":"Bash","tool_input":{"command":"%TEXT%"}})", script),
         request("A new file",
                 R"({"tool_name":"Write","tool_input":{"file_path":"/home/ada/a.py",)"
                 R"("content":"import os\n\nprint(os.getcwd())\n"}})"),
         request("An edit",
                 R"({"tool_name":"Edit","tool_input":{"file_path":"/home/ada/parse.cpp",)"
                 R"("old_string":"int parse()\n{\n    return 0;\n}","new_string":)"
                 R"("int parse()\n{\n    check();\n    return 1;\n}","replace_all":true}})"),
         request("A patch",
                 R"({"tool_name":"apply_patch","tool_input":{"command":"*** Begin Patch\n)"
                 R"(*** Update File: src/parse.cpp\n@@ int parse()\n {\n-    return 0;\n)"
                 R"(+    check();\n+    return 1;\n }\n*** End Patch","description":)"
                 R"("The parser must check its input"}})"),
         request("A page",
                 R"({"tool_name":"WebFetch","tool_input":{"url":"https://example.org/a",)"
                 R"("prompt":"read it"},"permission_suggestions":[{"type":"addRules",)"
                 R"("destination":"localSettings","rules":[{"toolName":"WebFetch","ruleContent":)"
                 R"("domain:example.org"}],"behavior":"allow"}]})"),
         request("A server's tool",
                 R"({"tool_name":"mcp__github__create_issue","tool_input":{"title":"Broken",)"
                 R"("labels":["bug","ui"],"draft":false}})"),
         request("A plan", R"({"tool_name":"ExitPlanMode","tool_input":{"plan":"%TEXT%"}})", plan),
         request("A long plan", R"({"tool_name":"ExitPlanMode","tool_input":{"plan":"%TEXT%"}})",
                 longPlan),
         request("A question",
                 R"({"tool_name":"AskUserQuestion","tool_input":{"questions":[{"question":)"
                 R"("Which database should I use?","header":"Database","options":[{"label":)"
                 R"("SQLite","description":"one file"},{"label":"Postgres","description":)"
                 R"("a server"},{"label":"None","description":"keep it in memory"}],)"
                 R"("multiSelect":false}]}})"),
         request("Several choices, two questions",
                 R"({"tool_name":"AskUserQuestion","tool_input":{"questions":[{"question":)"
                 R"("What should the report hold?","header":"Report","options":[{"label":)"
                 R"("Costs"},{"label":"Times","description":"by day"},{"label":"Errors"},)"
                 R"({"label":"Owners"},{"label":"Links"}],"multiSelect":true},{"question":)"
                 R"("For whom?","options":[]}]}})"),
         request("A question without options",
                 R"({"tool_name":"AskUserQuestion","tool_input":{"questions":[{"question":)"
                 R"("What shall it be called?","header":"Name","options":[]}]}})")},
        {720, 320}};
}

SceneGroup others()
{
    const auto card = [](const char *caption, IslandView view, const QList<AgentTask> &tasks) {
        return Scene{QString::fromUtf8(caption),
                     [view, tasks](AppState &state) { open(state, view, tasks); }};
    };
    const AgentTask wordy
        = spoken(makeTask("agent_ja", "在庫管理システム", "#F7B32B", {}),
                 "I moved the parser into its own module, wrote twelve tests for it and ran all of "
                 "them. Two fail, because the old grammar allowed a trailing comma in a list.");
    return {QStringLiteral("cards"),
            {card("Empty", IslandView::empty, {}),
             note("Note", QStringLiteral("Handled in VS Code.")),
             note("Long note",
                  QStringLiteral("The provider answered with a message that is far too "
                                 "long for one line of the island to hold.")),
             card("Question in the terminal", IslandView::question, {asking()}),
             card("Error", IslandView::error,
                  {spoken(editorTask(), "API Error: Request rejected (429)")}),
             card("Error without words", IslandView::error, {editorTask()}),
             card("Finished", IslandView::finished, {spoken(editorTask(), "The tests pass.")}),
             card("Finished, long words", IslandView::finished, {wordy}),
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
                                        state.pendingApproval = bashRequest(text);
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
                     state.pendingApproval
                         = bashRequest(QStringLiteral("npm run build -- --mode production"));
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
    return {overviews(),  approvals(), requests(), others(),
            foreigners(), washes(),    frames(),   outlines()};
}

} // namespace tirlo
