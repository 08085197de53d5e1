#include "StepWording.h"

#include "ToolNames.h"
#include "core/Json.h"
#include "core/Text.h"

#include <QStringList>
#include <QStringTokenizer>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

namespace tirlo {

namespace {

constexpr int longestDetail = 60;
const QString separator = QStringLiteral(" · ");

struct ToolLabel
{
    QStringView tool;
    QStringView label;
};

constexpr std::array toolLabels{
    ToolLabel{u"Bash", u"Exécute"},
    ToolLabel{u"Read", u"Lit"},
    ToolLabel{u"Write", u"Écrit"},
    ToolLabel{u"Edit", u"Modifie"},
    ToolLabel{u"Glob", u"Cherche"},
    ToolLabel{u"Grep", u"Recherche"},
    ToolLabel{u"WebSearch", u"Recherche web"},
    ToolLabel{u"WebFetch", u"Récupère"},
    ToolLabel{u"TodoWrite", u"Tâches"},
    ToolLabel{u"Task", u"Agent"},
    ToolLabel{u"LS", u"Liste"},
    ToolLabel{u"MultiEdit", u"Modifie"},
    ToolLabel{u"NotebookEdit", u"Notebook"},
    ToolLabel{u"apply_patch", u"Modifie"},
    ToolLabel{u"update_plan", u"Tâches"},
    ToolLabel{u"spawn_agent", u"Agent"},
};

constexpr std::array<QStringView, 7> readingCommands{u"cat",  u"bat",  u"head", u"tail",
                                                     u"less", u"more", u"nl"};
constexpr std::array<QStringView, 7> searchingCommands{u"rg", u"grep", u"find", u"fd",
                                                       u"ls", u"tree", u"wc"};
constexpr std::array<QStringView, 11> testMarkers{
    u"pytest",  u"vitest",     u"jest",      u"npm test",        u"npm run test", u"cargo test",
    u"go test", u"swift test", u"make test", u"xcodebuild test", u"unittest"};
constexpr std::array<QStringView, 3> patchHeaders{u"*** Update File: ", u"*** Add File: ",
                                                  u"*** Delete File: "};

QString labelOf(const QString &tool)
{
    if (const auto served = mcpTool(tool))
        return served->server + separator + served->tool;
    const auto row = std::ranges::find(toolLabels, QStringView(tool), &ToolLabel::tool);
    return row == toolLabels.end() ? tool : row->label.toString();
}

/// The name of the first file that the patch touches.
std::optional<QString> patchedFile(const QString &patch)
{
    for (const QStringView line : qTokenize(QStringView(patch), u'\n')) {
        for (const QStringView header : patchHeaders) {
            if (line.startsWith(header))
                return lastPathComponent(line.sliced(header.size()).toString());
        }
    }
    return std::nullopt;
}

/// What the call is about, from the first key of its input that is text.
std::optional<QString> detailOf(const QJsonObject &input)
{
    if (const auto command = Json::text(input, QLatin1String("command")))
        return oneLine(*command, longestDetail);
    for (const char *key : {"path", "file_path", "absolute_path", "dir_path"}) {
        if (const auto path = Json::text(input, QLatin1String(key)))
            return lastPathComponent(*path);
    }
    if (const auto query = Json::text(input, QLatin1String("query")))
        return oneLine(*query, longestDetail);
    return std::nullopt;
}

bool breaksLine(QChar c)
{
    return (c >= u'\t' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

QStringView firstWord(QStringView text)
{
    const auto isSpace = [](QChar c) { return c.isSpace(); };
    const auto begin = std::ranges::find_if_not(text, isSpace);
    const auto end = std::find_if(begin, text.end(), isSpace);
    return QStringView(begin, end);
}

} // namespace

QString frenchStep(const QString &name, const QJsonObject &input)
{
    const QString tool = commonToolName(name);
    const QString label = labelOf(tool);
    const auto command = Json::text(input, QLatin1String("command"));
    if (command && tool == QLatin1String("Bash"))
        return bashVerb(*command) + separator + oneLine(*command, longestDetail);

    const bool isPatch = command && tool == QLatin1String("apply_patch");
    const auto detail = isPatch ? patchedFile(*command) : detailOf(input);
    return detail ? label + separator + *detail : label;
}

QString bashVerb(const QString &command)
{
    const QStringView word = firstWord(command);
    if (std::ranges::find(readingCommands, word) != readingCommands.end())
        return QStringLiteral("Lit");
    if (std::ranges::find(searchingCommands, word) != searchingCommands.end())
        return QStringLiteral("Cherche");
    const auto isIn = [&command](QStringView marker) { return command.contains(marker); };
    if (std::ranges::any_of(testMarkers, isIn))
        return QStringLiteral("Teste");
    return QStringLiteral("Exécute");
}

QString oneLine(const QString &text, int limit)
{
    QString line;
    bool isBetween = false;
    for (const QChar c : text) {
        if (breaksLine(c)) {
            isBetween = true;
            continue;
        }
        if (isBetween && !line.isEmpty())
            line += u' ';
        isBetween = false;
        line += c;
    }
    return hasMoreCharacters(line, limit) ? firstCharacters(line, limit) + u'…' : line;
}

} // namespace tirlo
