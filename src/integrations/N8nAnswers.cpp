#include "N8nAnswers.h"

#include "core/Text.h"

#include <algorithm>

namespace tirlo::N8n {

namespace {

constexpr int longestValue = 50;
constexpr qsizetype shownMembers = 4;

constexpr QLatin1String dataKey("data");
constexpr QLatin1String errorKey("error");
constexpr QLatin1String messageKey("message");
constexpr QLatin1String nameKey("name");
constexpr QLatin1String runDataKey("runData");

bool isArrayOf(const JsonSlice &value, JsonSlice::Kind kind)
{
    return value.isArray() && std::ranges::all_of(value.elements(), [kind](const JsonSlice &each) {
               return each.kind() == kind;
           });
}

QString extractWorkflowName(const JsonSlice &from)
{
    if (const auto name = from[QLatin1String("workflowData")][nameKey].text())
        return *name;
    return from[nameKey].text().value_or(unnamedWorkflow);
}

/// A value in few characters, as a digest shows it.
QString fmtValue(const JsonSlice &value)
{
    switch (value.kind()) {
    case JsonSlice::Kind::string:
        return firstCharacters(value.text().value_or(QString()), longestValue);
    case JsonSlice::Kind::array:
        return QStringLiteral("[%1]").arg(value.elements().size());
    case JsonSlice::Kind::object:
        return QStringLiteral("{…}");
    default:
        return firstCharacters(value.source(), longestValue);
    }
}

std::optional<QString> parseSuccessDetail(const JsonSlice &resultData)
{
    const auto node = resultData[QLatin1String("lastNodeExecuted")].text();
    if (!node)
        return std::nullopt;
    const JsonSlice main = resultData[runDataKey][*node].first()[dataKey][QLatin1String("main")];
    const JsonSlice output = main.first();
    if (!isArrayOf(main, JsonSlice::Kind::array) || !output.isArray())
        return std::nullopt;

    const QList<JsonSlice> items = output.elements();
    const qsizetype count = items.size();
    QStringList lines{
        QStringLiteral("→ %1 · %2 item%3")
            .arg(*node, QString::number(count), count == 1 ? QString() : QStringLiteral("s"))};
    for (const auto &[key, value] :
         items.value(0)[QLatin1String("json")].members().mid(0, shownMembers))
        lines.append(key + QStringLiteral(": ") + fmtValue(value));
    return lines.join(QLatin1Char('\n'));
}

std::optional<QString> parseErrorDetail(const JsonSlice &resultData)
{
    const auto titled = [](const QString &title, const QString &message) {
        return title + QLatin1Char('\n') + message;
    };
    const JsonSlice error = resultData[errorKey];
    if (error.isObject()) {
        const QString message = error[messageKey].text().value_or(QString());
        const QString node = error[QLatin1String("node")][nameKey].text().value_or(QString());
        return node.isEmpty() ? message : titled(node, message);
    }
    for (const auto &[node, runs] : resultData[runDataKey].members()) {
        if (const auto message = runs.first()[errorKey][messageKey].text())
            return titled(node, *message);
    }
    return std::nullopt;
}

std::optional<QString> parseDetail(const JsonSlice &from, bool success)
{
    const JsonSlice resultData = from[dataKey][QLatin1String("resultData")];
    if (!resultData.isObject())
        return std::nullopt;
    return success ? parseSuccessDetail(resultData) : parseErrorDetail(resultData);
}

} // namespace

Listing parseListing(const QByteArray &body)
{
    const JsonSlice root = JsonSlice::of(body);
    const JsonSlice list = root.isObject() ? root[dataKey] : root;
    if (!isArrayOf(list, JsonSlice::Kind::object))
        return {};
    const JsonSlice newest = list.first();
    if (newest.kind() == JsonSlice::Kind::none)
        return {.isList = true};

    const JsonSlice id = newest[QLatin1String("id")];
    return {
        .isList = true,
        .isEmpty = false,
        .id = id.text() ? id.text() : id.integerDigits(),
        .status = newest[QLatin1String("status")].text().value_or(QString()),
    };
}

std::optional<Execution> parseExecution(const QByteArray &body, bool success)
{
    const JsonSlice root = JsonSlice::of(body);
    if (!root.isObject())
        return std::nullopt;
    return Execution{extractWorkflowName(root), parseDetail(root, success)};
}

} // namespace tirlo::N8n
