#include "ChatWire.h"

namespace tirlo {

QString systemPrompt()
{
    return QStringLiteral(
        "You are Pebbo, Ilmar's personal AI assistant embedded in the notch of his Mac. You have "
        "web search access and can help with absolutely anything — research, coding, finding "
        "places, recommendations, tasks, questions. Respond in the user's language. Be thorough "
        "and complete — use as much detail as the task requires. No markdown formatting (no **, "
        "no ##, no bullet dashes). Use plain text with line breaks.");
}

QString contextText(const PromptContext &context)
{
    if (const auto *file = std::get_if<FileContext>(&context))
        return QStringLiteral("File: ") + file->name;
    const auto &window = std::get<WindowContext>(context);
    const QString line = QStringLiteral("Context — App: ") + window.appName
        + QStringLiteral(", Window: ") + window.title;
    return window.url ? line + QStringLiteral(", URL: ") + *window.url : line;
}

} // namespace tirlo
