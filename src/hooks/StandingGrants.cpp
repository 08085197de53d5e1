#include "StandingGrants.h"

#include "core/HiddenMarks.h"
#include "core/Json.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

namespace tirlo {

namespace {

struct Destination
{
    QLatin1String name;
    QLatin1String words;
};

constexpr std::array destinations{
    Destination{QLatin1String("session"), QLatin1String("in this session")},
    Destination{QLatin1String("localSettings"), QLatin1String("in this project, for you")},
    Destination{QLatin1String("projectSettings"), QLatin1String("in this project")},
    Destination{QLatin1String("userSettings"), QLatin1String("everywhere")},
};

QString textOf(const QJsonObject &object, const char *key)
{
    return Json::text(object, QLatin1String(key)).value_or(QString());
}

bool holdsOnly(const QJsonObject &object, std::initializer_list<const char *> keys)
{
    const QStringList present = object.keys();
    return std::ranges::all_of(present, [keys](const QString &key) {
        return std::ranges::any_of(
            keys, [&key](const char *known) { return key == QLatin1String(known); });
    });
}

/// "Bash(touch:*)"; none for a rule that is not understood.
std::optional<QString> ruleWords(const QJsonObject &rule)
{
    const QString tool = textOf(rule, "toolName");
    if (tool.isEmpty() || !holdsOnly(rule, {"toolName", "ruleContent"}))
        return std::nullopt;
    if (!rule.contains(QLatin1String("ruleContent")))
        return QStringLiteral("all of ") + tool;
    const QString content = textOf(rule, "ruleContent");
    return content.isEmpty() ? std::nullopt
                             : std::optional(QStringLiteral("%1(%2)").arg(tool, content));
}

std::optional<QString> rulesWords(const QJsonObject &suggestion)
{
    const auto rules = Json::objects(suggestion, QLatin1String("rules"));
    if (!rules || textOf(suggestion, "behavior") != QLatin1String("allow")
        || !holdsOnly(suggestion, {"type", "rules", "behavior", "destination"}))
        return std::nullopt;
    QStringList words;
    for (const QJsonObject &rule : *rules) {
        const auto one = ruleWords(rule);
        if (!one)
            return std::nullopt;
        words.append(*one);
    }
    return words.join(QLatin1String(", "));
}

std::optional<QString> foldersWords(const QJsonObject &suggestion)
{
    if (!holdsOnly(suggestion, {"type", "directories", "destination"}))
        return std::nullopt;
    QStringList folders;
    const QJsonArray listed = suggestion.value(QLatin1String("directories")).toArray();
    for (const auto folder : listed) {
        if (folder.toString().isEmpty())
            return std::nullopt;
        folders.append(folder.toString());
    }
    if (folders.isEmpty())
        return QString();
    return (folders.size() == 1 ? QStringLiteral("the folder ") : QStringLiteral("the folders "))
        + folders.join(QLatin1String(", "));
}

std::optional<QString> modeWords(const QJsonObject &suggestion)
{
    const bool isKept = textOf(suggestion, "mode") == QLatin1String("acceptEdits")
        && textOf(suggestion, "destination") == QLatin1String("session")
        && holdsOnly(suggestion, {"type", "mode", "destination"});
    return isKept ? std::optional(QStringLiteral("accept edits")) : std::nullopt;
}

/// What the suggestion keeps; none, or nothing, for one that is not understood.
std::optional<QString> whatWords(const QJsonObject &suggestion)
{
    const QString type = textOf(suggestion, "type");
    if (type == QLatin1String("addRules"))
        return rulesWords(suggestion);
    if (type == QLatin1String("addDirectories"))
        return foldersWords(suggestion);
    if (type == QLatin1String("setMode"))
        return modeWords(suggestion);
    return std::nullopt;
}

} // namespace

QList<StandingGrant> standingGrants(const QJsonObject &payload)
{
    QList<StandingGrant> grants;
    QSet<QString> told;
    const QJsonArray listed = payload.value(QLatin1String("permission_suggestions")).toArray();
    for (const auto value : listed) {
        const QJsonObject suggestion = value.toObject();
        const auto where = std::ranges::find_if(destinations, [&](const Destination &row) {
            return textOf(suggestion, "destination") == row.name;
        });
        const QString what = whatWords(suggestion).value_or(QString());
        if (what.isEmpty() || where == destinations.end())
            continue;
        const QString words = lineWithoutHiddenMarks(what) + u' ' + where->words;
        if (told.contains(words))
            continue;
        told.insert(words);
        grants.append({.words = words, .suggestion = suggestion});
    }
    return grants;
}

} // namespace tirlo
