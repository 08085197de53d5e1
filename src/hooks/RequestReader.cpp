#include "RequestReader.h"

#include "ArgumentLines.h"
#include "ToolNames.h"
#include "core/HiddenMarks.h"
#include "core/Json.h"

#include <QJsonArray>
#include <QStringList>
#include <QStringTokenizer>

#include <algorithm>
#include <array>
#include <optional>

namespace tirlo {

namespace {

using Kind = RequestContent::Kind;
using Keys = std::array<const char *, 3>;

/// How the request of one tool is read.
struct Reading
{
    const char *tool;
    const char *title;
    Kind kind;
    /// The first of these that is a text is the subject; it stays among the arguments otherwise.
    Keys subject = {};
    /// The arguments that are the content; without them the request is shown as its arguments.
    const char *text = nullptr;
    const char *before = nullptr;
};

constexpr std::array readings{
    Reading{"Bash", "Run a command", Kind::command, {}, "command"},
    Reading{"Write", "Write a file", Kind::text, {"file_path"}, "content"},
    Reading{"Edit", "Edit a file", Kind::diff, {"file_path"}, "new_string", "old_string"},
    Reading{"MultiEdit", "Edit a file", Kind::diff, {"file_path"}, "edits"},
    Reading{"NotebookEdit", "Edit a file", Kind::text, {"notebook_path"}, "new_source"},
    Reading{"apply_patch", "Edit a file", Kind::patch, {}, "command"},
    Reading{"Read", "Read a file", Kind::fields, {"file_path", "absolute_path"}},
    Reading{"LS", "List a folder", Kind::fields, {"path", "dir_path"}},
    Reading{"Glob", "Search files", Kind::fields, {"pattern"}},
    Reading{"Grep", "Search files", Kind::fields, {"pattern", "query"}},
    Reading{"WebFetch", "Fetch a page", Kind::fields, {"url"}},
    Reading{"WebSearch", "Search the web", Kind::fields, {"query"}},
    Reading{"ExitPlanMode", "Approve a plan", Kind::plan, {}, "plan"},
    Reading{"AskUserQuestion", "Answer a question", Kind::fields},
};

constexpr std::array<QStringView, 4> patchHeaders{u"*** Update File: ", u"*** Add File: ",
                                                  u"*** Delete File: ", u"*** Move to: "};

/// Takes the argument away if it is text.
std::optional<QString> takeText(QJsonObject &arguments, const char *key)
{
    auto text = Json::text(arguments, QLatin1String(key));
    if (text)
        arguments.remove(QLatin1String(key));
    return text;
}

/// The files that the patch touches, in its order.
QString patchedFiles(const QString &patch)
{
    QStringList files;
    for (const QStringView line : qTokenize(QStringView(patch), u'\n')) {
        for (const QStringView header : patchHeaders) {
            if (line.startsWith(header))
                files.append(line.sliced(header.size()).toString());
        }
    }
    return files.join(QLatin1String(", "));
}

/// Takes several edits of one file as one diff, a headed piece each; false for what is none.
bool takeEdits(QJsonObject &arguments, const char *key, RequestContent &content)
{
    const auto edits = Json::objects(arguments, QLatin1String(key));
    if (!edits || edits->isEmpty())
        return false;

    QStringList before;
    QStringList after;
    for (QJsonObject edit : *edits) {
        const auto from = takeText(edit, "old_string");
        const auto to = takeText(edit, "new_string");
        if (!from || !to)
            return false;
        // The same line on both sides keeps the edits apart, and shows what else is asked for.
        QString head
            = QStringLiteral("@@ %1 of %2 @@").arg(after.size() / 2 + 1).arg(edits->size());
        if (!edit.isEmpty())
            head += u' ' + lineWithoutHiddenMarks(argumentLines(edit));
        before << head << *from;
        after << head << *to;
    }
    content.before = before.join(u'\n');
    content.text = after.join(u'\n');
    arguments.remove(QLatin1String(key));
    return true;
}

/// Takes the content that the tool is known to have; false when it is not there as text.
bool takeContent(QJsonObject &arguments, const Reading &reading, RequestContent &content)
{
    if (!reading.text)
        return false;
    if (reading.kind != Kind::diff) {
        const auto text = takeText(arguments, reading.text);
        if (text)
            content.text = withoutHiddenMarks(*text);
        return text.has_value();
    }
    if (!reading.before)
        return takeEdits(arguments, reading.text, content);

    QJsonObject others = arguments;
    const auto before = takeText(others, reading.before);
    const auto text = takeText(others, reading.text);
    if (!before || !text)
        return false;
    content.before = *before;
    content.text = *text;
    arguments = others;
    return true;
}

QString titleOf(const QString &tool)
{
    if (const auto served = mcpTool(tool))
        return lineWithoutHiddenMarks(served->server + QStringLiteral(" · ") + served->tool);
    return lineWithoutHiddenMarks(tool);
}

const Reading *readingOf(const QString &tool)
{
    const QString name = commonToolName(tool);
    const auto row = std::ranges::find_if(
        readings, [&](const Reading &reading) { return name == QLatin1String(reading.tool); });
    return row == readings.end() ? nullptr : &*row;
}

} // namespace

RequestContent requestContent(const QJsonObject &payload)
{
    const QString tool
        = Json::text(payload, QLatin1String("tool_name")).value_or(QStringLiteral("Tool"));
    const QJsonValue input = payload.value(QLatin1String("tool_input"));
    QJsonObject arguments = input.toObject();
    if (!input.isObject() && !input.isUndefined() && !input.isNull())
        arguments.insert(QLatin1String("tool_input"), input);

    RequestContent content{.title = titleOf(tool)};
    // A server's tool may well have an argument of that name that is no reason.
    if (!mcpTool(tool))
        content.reason
            = lineWithoutHiddenMarks(takeText(arguments, "description").value_or(QString()));

    if (const Reading *reading = readingOf(tool)) {
        content.title = QLatin1String(reading->title);
        for (const char *key : reading->subject) {
            if (!key || !content.subject.isEmpty())
                break;
            content.subject = lineWithoutHiddenMarks(takeText(arguments, key).value_or(QString()));
        }
        if (takeContent(arguments, *reading, content))
            content.kind = reading->kind;
        if (tool == QLatin1String("apply_patch"))
            content.subject = patchedFiles(content.text);
    }

    QString &rest = content.kind == Kind::fields ? content.text : content.more;
    rest = argumentLines(arguments);
    return content;
}

} // namespace tirlo
