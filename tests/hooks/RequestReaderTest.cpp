#include "hooks/RequestReader.h"
#include "HookFixture.h"

#include <QJsonArray>

namespace tirlo {
namespace {

using Kind = RequestContent::Kind;

RequestContent contentOf(const char *tool, const QJsonValue &input)
{
    return requestContent({{u"tool_name"_s, QString::fromUtf8(tool)}, {u"tool_input"_s, input}});
}

TEST(RequestReader, TellsWhatEachToolIsToDoWithAllItsArguments)
{
    const struct
    {
        const char *tool;
        const char *input;
        RequestContent content;
    } rows[] = {
        {"Bash",
         R"({"command":"a\nb\u202e","description":"why\nso","timeout":5,"x":[{"y":null}]})",
         {u"Run a command"_s,
          u"why⏎so"_s,
          {},
          Kind::command,
          u"a\nb\uFFFD"_s,
          {},
          u"timeout: 5\nx: [{\"y\":null}]"_s}},
        {"run_shell_command",
         R"({"command":"ls","dir_path":"/x"})",
         {u"Run a command"_s, {}, {}, Kind::command, u"ls"_s, {}, u"dir_path: /x"_s}},
        {"Bash",
         R"({"command":["sh","-c","rm"],"description":7})",
         {u"Run a command"_s,
          {},
          {},
          Kind::fields,
          u"command: [\"sh\",\"-c\",\"rm\"]\ndescription: 7"_s,
          {},
          {}}},
        {"Write",
         R"({"file_path":"/a\n/b","content":"x\r\n\ty\n"})",
         {u"Write a file"_s, {}, u"/a⏎/b"_s, Kind::text, u"x\n\ty\n"_s, {}, {}}},
        // A diff compares its texts as they are.
        {"Edit",
         R"({"file_path":"/a","old_string":"x\r\n","new_string":"y\u200b","replace_all":true})",
         {u"Edit a file"_s,
          {},
          u"/a"_s,
          Kind::diff,
          u"y\u200B"_s,
          u"x\r\n"_s,
          u"replace_all: true"_s}},
        {"replace",
         R"({"file_path":"/a","old_string":"x"})",
         {u"Edit a file"_s, {}, u"/a"_s, Kind::fields, u"old_string: x"_s, {}, {}}},
        {"MultiEdit",
         R"({"file_path":"/a","edits":[{"old_string":"a","new_string":"b"},
                          {"old_string":"c","new_string":"","replace_all":true}]})",
         {u"Edit a file"_s,
          {},
          u"/a"_s,
          Kind::diff,
          u"@@ 1 of 2 @@\nb\n@@ 2 of 2 @@ replace_all: true\n"_s,
          u"@@ 1 of 2 @@\na\n@@ 2 of 2 @@ replace_all: true\nc"_s,
          {}}},
        {"MultiEdit",
         R"({"edits":[{"old_string":"a"}]})",
         {u"Edit a file"_s, {}, {}, Kind::fields, u"edits: [{\"old_string\":\"a\"}]"_s, {}, {}}},
        {"NotebookEdit",
         R"({"notebook_path":"/n","new_source":"1+1","edit_mode":"insert"})",
         {u"Edit a file"_s, {}, u"/n"_s, Kind::text, u"1+1"_s, {}, u"edit_mode: insert"_s}},
        {"apply_patch",
         R"({"command":"*** Update File: a/b\n-x\n*** Delete File: c"})",
         {u"Edit a file"_s,
          {},
          u"a/b, c"_s,
          Kind::patch,
          u"*** Update File: a/b\n-x\n*** Delete File: c"_s,
          {},
          {}}},
        {"Read",
         R"({"file_path":"/a","limit":5})",
         {u"Read a file"_s, {}, u"/a"_s, Kind::fields, u"limit: 5"_s, {}, {}}},
        {"Grep",
         R"({"pattern":"x","path":"/a","-i":true})",
         {u"Search files"_s, {}, u"x"_s, Kind::fields, u"-i: true\npath: /a"_s, {}, {}}},
        {"WebFetch",
         R"({"url":"http://x","prompt":"read it"})",
         {u"Fetch a page"_s, {}, u"http://x"_s, Kind::fields, u"prompt: read it"_s, {}, {}}},
        {"google_web_search",
         R"({"query":"x"})",
         {u"Search the web"_s, {}, u"x"_s, Kind::fields, {}, {}, {}}},
        {"ExitPlanMode",
         R"({"plan":"# Plan\n1. a"})",
         {u"Approve a plan"_s, {}, {}, Kind::plan, u"# Plan\n1. a"_s, {}, {}}},
        // A text of several lines can't pass for another argument.
        {"mcp__git__make__issue",
         R"({"description":"a\nbody: b","k\u2028":1e3})",
         {u"git · make__issue"_s,
          {},
          {},
          Kind::fields,
          u"description:\n    a\n    body: b\nk⏎: 1000"_s,
          {},
          {}}},
        {"Odd\n",
         R"({"a":"","b":false})",
         {u"Odd⏎"_s, {}, {}, Kind::fields, u"a: \nb: false"_s, {}, {}}},
    };
    for (const auto &row : rows) {
        const RequestContent content = contentOf(row.tool, json(row.input));
        EXPECT_EQ(content, row.content)
            << row.tool << row.input << "\n"
            << qPrintable(QStringList({content.title, content.reason, content.subject, content.text,
                                       content.before, content.more})
                              .join(u" | "_s));
    }
}

TEST(RequestReader, ReadsAnyInput)
{
    EXPECT_EQ(requestContent({}), (RequestContent{.title = u"Tool"_s}));
    EXPECT_EQ(contentOf("Bash", u"rm -rf x"_s).text, u"tool_input: rm -rf x"_s);

    QJsonValue nested = u"deep"_s;
    for (int i = 0; i < 100; ++i)
        nested = i % 2 ? QJsonValue(QJsonArray{nested}) : QJsonObject{{u"k"_s, nested}};
    EXPECT_TRUE(contentOf("Bash", QJsonObject{{u"a"_s, nested}}).text.contains(u"deep"_s));

    const QString lines = u"x\u0000\uFFFD\n"_s.repeated(100'000);
    EXPECT_EQ(contentOf("Write", QJsonObject{{u"content"_s, lines}}).text.count(u'\n'), 100'000);
}

} // namespace
} // namespace tirlo
