#include "hooks/StepWording.h"
#include "HookFixture.h"

namespace tirlo {
namespace {

TEST(StepWording, TellsEachToolCall)
{
    const struct
    {
        const char *tool;
        const char *input;
        const char *step;
    } rows[] = {
        {"Bash", R"({"command":"git status"})", "Exécute · git status"},
        {"Bash", R"({"command":"cat a.txt"})", "Lit · cat a.txt"},
        {"Bash", R"({"command":7,"path":"/a/b"})", "Exécute · b"},
        {"Bash", "{}", "Exécute"},
        {"Bash", R"({"command":"nl"})", "Lit · nl"},
        {"Bash", R"({"command":"catalog x"})", "Exécute · catalog x"},
        {"Bash", R"({"command":"/bin/cat x"})", "Exécute · /bin/cat x"},
        {"Bash", R"({"command":"rg pytest"})", "Cherche · rg pytest"},
        {"Bash", R"({"command":"cd x && go test"})", "Teste · cd x && go test"},
        {"Bash", R"({"command":"PYTEST=1 make"})", "Exécute · PYTEST=1 make"},
        {"Edit", R"({"file_path":"/a/z","path":"/x/y"})", "Modifie · y"},
        {"Edit", R"({"file_path":"/a/z","path":["/x/y"]})", "Modifie · z"},
        {"Grep", R"({"query":"a\n\tb","command":null})", "Recherche · a b"},
        {"TodoWrite", R"({"todos":[]})", "Tâches"},
        {"mcp__github__get_pull__request", "{}", "github · get_pull__request"},
        {"mcp__github__search", R"({"query":"x"})", "github · search · x"},
        {"mcp__github", "{}", "mcp__github"},
        {"apply_patch", R"({"command":"*** Begin Patch\n\n*** Update File: src/app.ts\n"})",
         "Modifie · app.ts"},
        {"apply_patch", R"({"command":"x\n*** Delete File: a\n*** Add File: b\n"})", "Modifie · a"},
        {"apply_patch", R"({"command":"rm -r /","path":"/x"})", "Modifie"},
        {"apply_patch", R"({"path":"/x/y"})", "Modifie · y"},
        {"run_shell_command", R"({"command":"cat a"})", "Lit · cat a"},
        {"list_directory", R"({"dir_path":"/a/b"})", "Liste · b"},
        {"replace", R"({"file_path":"/a/z"})", "Modifie · z"},
        {"Whatever", R"({"depth":3})", "Whatever"},
        {"", R"({"path":"/"})", " · /"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(frenchStep(QString::fromUtf8(row.tool), json(row.input)),
                  QString::fromUtf8(row.step));
    }
}

TEST(StepWording, BringsTextOnOneLineOfLimitedLength)
{
    EXPECT_EQ(oneLine(u"\n a \r\n\v\fb\u0085\u2028c  d\u2029"_s, 60), u" a  b c  d"_s);
    EXPECT_EQ(oneLine(u"\n\t"_s, 60), QString());

    const QString sixty(60, u'x');
    EXPECT_EQ(oneLine(sixty, 60), sixty);
    EXPECT_EQ(oneLine(sixty + u'y', 60), sixty + u'…');

    // A family of four and an accent made of two marks are one character each.
    const QString family = u"👨‍👩‍👧‍👦"_s;
    EXPECT_EQ(oneLine(family + u"e\u0301z"_s, 2), family + u"e\u0301…"_s);
    EXPECT_EQ(oneLine(u"👨\u17d1ab"_s, 1), u"👨…"_s);
}

} // namespace
} // namespace tirlo
