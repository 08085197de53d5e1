#include "RiskyWords.h"

#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace tirlo {

namespace {

/// Longer commands are read no further.
constexpr qsizetype longestRead = 100'000;

// A command by its name, wherever it stands.
#define COMMAND(names) R"((?<![\w.-])(?:)" names R"()(?![\w.-]))"
// The rest of a simple command, over a continued line as well, and the words up to a subcommand.
// Their lengths are bounded, so that long commands are read in no time.
#define REST R"((?:[^\n;|&]|\\\n){0,300}?)"
#define GIT(subcommand) COMMAND("git") R"((?:[^\n;|&]){0,80}?\s)" subcommand R"(\b)" REST
// A short option among those of one word, or a long one.
#define OPTION(letters, words) R"(\s['"]?(?:-[A-Za-z]*[)" letters R"(][A-Za-z]*|)" words R"()\b)"
// What a command hands on by a pipe, and who runs it.
#define PIPED R"((?:[^\n;&]|\\\n|[;&](?=[^\s;&])){0,300}?\|\s*)"
#define SHELL                                                                                      \
    R"((?:sudo\s+)?(?:env\s+)?(?:/[\w./-]*/)?(?:(?:ba|z|k|da|fi)?sh|python[\d.]*|perl|ruby|node|php)\b)"

const char *const risks[] = {
    COMMAND("sudo|doas|pkexec"),
    COMMAND("shred|wipefs|blkdiscard|mkfs(?:\\.\\w+)?"),
    COMMAND("rm") REST OPTION("rRf", "--recursive|--force"),
    COMMAND("find") REST R"(\s-delete\b)",
    COMMAND("dd") REST R"(\bof=[^\s;|&]*)",
    R"(>\s*/dev/(?:sd|hd|vd|xvd|nvme|mmcblk|disk)\w*)",
    COMMAND("chmod|chown") REST OPTION("R", "--recursive"),
    COMMAND("chmod") REST R"(\s0?777\b)",
    GIT("push") R"(\s(?:-[A-Za-z]*[fd][A-Za-z]*\b|--force[\w-]*|--mirror|--delete|\+\S+))",
    GIT("reset") R"(\s--hard\b)",
    GIT("clean") OPTION("f", "--force"),
    GIT("branch") R"(\s-D\b)",
    GIT("checkout") R"(\s--(?=\s))",
    GIT("stash") R"(\s(?:drop|clear)\b)",
    R"(\b(?i:drop|truncate)\s+(?i:table|database|schema)\b)",
    R"(\brmtree\b)",
    R"(:\(\)\s*\{)",
    // What was fetched or unpacked goes to an interpreter.
    COMMAND("curl|wget") PIPED SHELL,
    COMMAND("base64") R"(\s+(?:-d|-D|--decode)\b)" PIPED SHELL,
    "(?:" COMMAND("eval|source") R"(|(?<!\S)\.|)" SHELL
                                 R"()\s[^\n]{0,60}?(?:<\(|\$\(|`)\s*(?:curl|wget)\b)",
};

#undef COMMAND
#undef REST
#undef GIT
#undef OPTION
#undef PIPED
#undef SHELL

const std::vector<QRegularExpression> &patterns()
{
    static const auto made = [] {
        std::vector<QRegularExpression> list;
        for (const char *risk : risks)
            list.emplace_back(QLatin1String(risk));
        return list;
    }();
    return made;
}

} // namespace

QList<TextRange> riskyWords(const QString &command)
{
    const QString read = command.left(longestRead);
    QList<TextRange> found;
    for (const QRegularExpression &pattern : patterns()) {
        auto matches = pattern.globalMatch(read);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            found.append({match.capturedStart(), match.capturedLength()});
        }
    }
    std::ranges::sort(found, {}, &TextRange::start);

    QList<TextRange> ranges;
    for (const TextRange &range : found) {
        if (ranges.isEmpty() || range.start >= ranges.last().start + ranges.last().length) {
            ranges.append(range);
            continue;
        }
        TextRange &last = ranges.last();
        last.length = std::max(last.length, range.start + range.length - last.start);
    }
    return ranges;
}

} // namespace tirlo
