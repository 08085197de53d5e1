#include "EditorHosts.h"

#include "core/AgentCatalog.h"
#include "core/Json.h"

#include <QJsonArray>

#include <algorithm>

namespace tirlo {

namespace {

/// What gives an editor away.
struct Mark
{
    enum class In {
        /// The name of a program above the agent.
        program,
        /// A folder on the way to such a program: the editor's part on a machine that it reaches
        /// from afar has a borrowed interpreter for a program.
        folder,
        /// An environment variable: a path with a part that is the word, or the word and more
        /// after a mark that is no letter; any value for an empty word.
        variable,
    };

    In in;
    AgentId editor;
    QLatin1String word;
    QLatin1String variable = {};
};

using In = Mark::In;
constexpr auto cursor = AgentId::cursor;
constexpr auto vsCode = AgentId::claudeCode;

constexpr Mark marks[] = {
    {In::program, cursor, QLatin1String("cursor")},
    {In::folder, cursor, QLatin1String(".cursor-server")},
    {In::program, vsCode, QLatin1String("code")},
    {In::program, vsCode, QLatin1String("code-insiders")},
    {In::program, vsCode, QLatin1String("code-oss")},
    {In::program, vsCode, QLatin1String("codium")},
    {In::folder, vsCode, QLatin1String(".vscode-server")},
    {In::folder, vsCode, QLatin1String(".vscode-server-insiders")},

    // Cursor hands down what VS Code does as well, so that its own marks come first.
    {In::variable, cursor, QLatin1String(""), QLatin1String("CURSOR_TRACE_ID")},
    {In::variable, cursor, QLatin1String("cursor"), QLatin1String("CHROME_DESKTOP")},
    {In::variable, cursor, QLatin1String("cursor"), QLatin1String("VSCODE_GIT_ASKPASS_NODE")},
    {In::variable, cursor, QLatin1String("cursor"), QLatin1String("VSCODE_IPC_HOOK")},
    {In::variable, vsCode, QLatin1String("claude-vscode"), QLatin1String("CLAUDE_CODE_ENTRYPOINT")},
    {In::variable, vsCode, QLatin1String("code"), QLatin1String("CHROME_DESKTOP")},
    {In::variable, vsCode, QLatin1String(""), QLatin1String("VSCODE_GIT_ASKPASS_NODE")},
    {In::variable, vsCode, QLatin1String(""), QLatin1String("VSCODE_IPC_HOOK")},
    {In::variable, vsCode, QLatin1String(""), QLatin1String("VSCODE_PID")},
};

bool fitsProgram(const Mark &mark, const QString &path)
{
    if (mark.in == In::folder)
        return path.contains(u'/' + mark.word + u'/');
    const auto name = QStringView(path).sliced(path.lastIndexOf(u'/') + 1);
    return mark.in == In::program && name.compare(mark.word, Qt::CaseInsensitive) == 0;
}

bool fitsEnvironment(const Mark &mark, const QJsonObject &environment)
{
    if (mark.in != In::variable)
        return false;
    const QString path = Json::text(environment, mark.variable).value_or(QString());
    const QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
    return std::ranges::any_of(parts, [&mark](QStringView part) {
        if (part.startsWith(u'.'))
            part = part.sliced(1);
        const bool begins = part.startsWith(mark.word, Qt::CaseInsensitive);
        // Another program's name may begin alike.
        return begins
            && (mark.word.isEmpty() || part.size() == mark.word.size()
                || !part.at(mark.word.size()).isLetterOrNumber());
    });
}

template<typename Fits>
QString find(Fits fits)
{
    for (const Mark &mark : marks) {
        if (fits(mark))
            return AgentCatalog::definition(mark.editor).application;
    }
    return {};
}

} // namespace

QString editorOf(const QJsonObject &payload)
{
    // The nearest program decides: one editor may well have been started in another.
    for (const QJsonValue program : payload.value(QLatin1String("tirlo_programs")).toArray()) {
        const QString path = program.toString();
        QString editor = find([&](const Mark &mark) { return fitsProgram(mark, path); });
        if (!editor.isEmpty())
            return editor;
    }
    const auto environment = Json::object(payload, QLatin1String("tirlo_host"));
    return find([&](const Mark &mark) {
        return fitsEnvironment(mark, environment.value_or(QJsonObject()));
    });
}

} // namespace tirlo
