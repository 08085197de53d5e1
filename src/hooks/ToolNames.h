#pragma once

#include <QString>

#include <optional>

namespace tirlo {

/// A tool of an MCP server.
struct McpTool
{
    QString server;
    QString tool;
};

/// The server and tool that "mcp__server__tool" names; none for any other name.
[[nodiscard]] std::optional<McpTool> mcpTool(const QString &name);

/// The name by which most agents know that tool, for one of Gemini's; any other name unchanged.
[[nodiscard]] QString commonToolName(const QString &name);

} // namespace tirlo
