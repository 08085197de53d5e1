#include "ToolNames.h"

#include <algorithm>
#include <array>

namespace tirlo {

namespace {

struct Counterpart
{
    QStringView name;
    QStringView common;
};

constexpr std::array counterparts{
    Counterpart{u"run_shell_command", u"Bash"},
    Counterpart{u"read_file", u"Read"},
    Counterpart{u"read_many_files", u"Read"},
    Counterpart{u"write_file", u"Write"},
    Counterpart{u"replace", u"Edit"},
    Counterpart{u"list_directory", u"LS"},
    Counterpart{u"glob", u"Glob"},
    Counterpart{u"search_file_content", u"Grep"},
    Counterpart{u"grep_search", u"Grep"},
    Counterpart{u"google_web_search", u"WebSearch"},
    Counterpart{u"web_fetch", u"WebFetch"},
    Counterpart{u"write_todos", u"TodoWrite"},
};

} // namespace

std::optional<McpTool> mcpTool(const QString &name)
{
    const QStringView prefix = u"mcp__";
    if (!name.startsWith(prefix))
        return std::nullopt;
    const qsizetype split = name.indexOf(QLatin1String("__"), prefix.size());
    if (split < 0)
        return std::nullopt;
    return McpTool{name.sliced(prefix.size(), split - prefix.size()), name.sliced(split + 2)};
}

QString commonToolName(const QString &name)
{
    const auto row = std::ranges::find(counterparts, QStringView(name), &Counterpart::name);
    return row == counterparts.end() ? name : row->common.toString();
}

} // namespace tirlo
